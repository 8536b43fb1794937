#include <filesystem>

#include <windows.h>

#include "platform/directories.h"
#include "platform/file_name.h"

namespace quillmark {
namespace {

/// What a call of the system writes into a buffer, which tells the size that it needs.
template <typename Call>
std::wstring textOf(Call call) {
    std::wstring text(call(nullptr, 0), L'\0');
    text.resize(call(text.data(), static_cast<DWORD>(text.size())));
    return text;
}

std::string nameOf(const std::filesystem::path& directory) {
    const bool endsInSlash = !directory.has_filename() && directory != directory.root_path();
    return toName(endsInSlash ? directory.parent_path() : directory);
}

}  // namespace

std::string temporaryDirectory() {
    const std::wstring given =
        textOf([](wchar_t* buffer, DWORD size) { return GetTempPathW(size, buffer); });
    const std::wstring longName = textOf(
        [&](wchar_t* buffer, DWORD size) { return GetLongPathNameW(given.c_str(), buffer, size); });
    // The short name of a directory is always in the code page, which the long one need not be.
    const std::string name = nameOf(longName);
    return name.empty() ? nameOf(given) : name;
}

bool createPrivateDirectory(const std::string& name) {
    return CreateDirectoryW(toPath(name).c_str(), nullptr) != FALSE;
}

}  // namespace quillmark
