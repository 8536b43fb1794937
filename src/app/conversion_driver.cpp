#include "app/conversion_driver.h"

#include <cstddef>
#include <filesystem>

namespace quillmark {
namespace {

// A backslash parts directories on Windows only; elsewhere it may stand in a file's name.
constexpr std::string_view kDirectorySeparators =
    std::filesystem::path::preferred_separator == '/' ? "/" : "/\\";

}  // namespace

std::string zpkiNameFor(std::string_view outputFile) {
    const std::size_t separator = outputFile.find_last_of(kDirectorySeparators);
    const std::size_t fileStart = separator == std::string_view::npos ? 0 : separator + 1;
    const std::size_t dot = outputFile.rfind('.');
    if (dot == std::string_view::npos || dot < fileStart || dot + 1 == outputFile.size()) {
        return {};
    }
    return std::string(outputFile.substr(0, dot)) + ".zpki";
}

}  // namespace quillmark
