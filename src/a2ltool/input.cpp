#include "a2ltool/input.h"

#include <cstddef>
#include <filesystem>
#include <system_error>
#include <utility>

#include "platform/file_name.h"
#include "platform/temporary_file.h"

namespace quillmark::a2ltool {
namespace {

bool isPlainFile(const std::string& name) {
    std::error_code ignored;
    return std::filesystem::is_regular_file(toPath(name), ignored);
}

}  // namespace

Input::Input(std::string name)
    : name_(std::move(name)),
      shownName_(name_ == "-" ? "<stdin>" : name_),
      isPlainFile_(name_ != "-" && isPlainFile(name_)) {}

Input::~Input() {
    if (copy_ != nullptr) {
        std::fclose(copy_);
    }
}

Description Input::read(const ReadOptions& options, bool keepText) {
    if (isPlainFile_) {
        return Description::readFile(name_, options);
    }
    const auto stream =
        name_ == "-" ? std::make_unique<StandardInputFile>(stdin) : StandardInputFile::open(name_);
    if (stream == nullptr) {
        return {};
    }
    copy_ = keepText ? openTemporaryFile() : nullptr;
    return readOnce(*stream, options);
}

Description Input::readOnce(InputFile& stream, const ReadOptions& options) {
    const ByteSource source = [&](char* buffer, std::size_t size) {
        const std::size_t count = stream.read(buffer, size);
        if (copy_ != nullptr && std::fwrite(buffer, 1, count, copy_) < count) {
            // Without room for the copy there are no lines to show.
            std::fclose(std::exchange(copy_, nullptr));
        }
        return count;
    };
    return Description::readStream(source, shownName_, options);
}

std::unique_ptr<InputFile> Input::text() {
    if (isPlainFile_) {
        return StandardInputFile::openBinary(name_);
    }
    if (copy_ == nullptr) {
        return nullptr;
    }
    std::rewind(copy_);
    return std::make_unique<StandardInputFile>(std::exchange(copy_, nullptr));
}

}  // namespace quillmark::a2ltool
