#include "platform/file_name.h"

namespace quillmark {

const std::string_view kDirectorySeparators = "/";

std::filesystem::path toPath(std::string_view name) {
    return name;
}

std::string toName(const std::filesystem::path& path) {
    return path.native();
}

std::string toUriPath(std::string_view name) {
    return std::string(name);
}

std::size_t startOfLastPart(std::string_view name, std::string_view separators) {
    return name.find_last_of(separators) + 1;  // npos + 1 is 0: the whole name
}

NameCharacters::NameCharacters() = default;

NameCharacters::~NameCharacters() = default;

}  // namespace quillmark
