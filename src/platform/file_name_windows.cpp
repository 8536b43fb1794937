#include <clocale>

#include <windows.h>

#include "platform/file_name.h"

namespace quillmark {

const std::string_view kDirectorySeparators = "/\\";

std::filesystem::path toPath(std::string_view name) {
    const int size = static_cast<int>(name.size());
    const int wideSize =
        MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, name.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(wideSize), L'\0');
    MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, name.data(), size, wide.data(), wideSize);
    return wide;
}

std::string toName(const std::filesystem::path& path) {
    const std::wstring wide = path.generic_wstring();
    const int wideSize = static_cast<int>(wide.size());
    const int size =
        WideCharToMultiByte(CP_ACP, 0, wide.data(), wideSize, nullptr, 0, nullptr, nullptr);
    std::string name(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_ACP, 0, wide.data(), wideSize, name.data(), size, nullptr, nullptr);
    // What the code page lacks has become something that looks alike, or a question mark.
    return toPath(name).native() == wide ? name : std::string();
}

std::string toUriPath(std::string_view name) {
    const std::filesystem::path path = toPath(name);
    const std::u8string text = path.generic_u8string();
    return (path.is_absolute() && !text.starts_with(u8"/") ? "/" : "") +
           std::string(text.begin(), text.end());
}

std::size_t startOfLastPart(std::string_view name, std::string_view separators) {
    std::size_t start = 0;
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (IsDBCSLeadByte(static_cast<BYTE>(name[i])) != FALSE) {
            ++i;
        } else if (separators.find(name[i]) != std::string_view::npos) {
            start = i + 1;
        }
    }
    return start;
}

NameCharacters::NameCharacters() : old_(std::setlocale(LC_CTYPE, nullptr)) {
    // By number: without one it would be the user's code page, which need not be the system's.
    std::setlocale(LC_CTYPE, ("." + std::to_string(GetACP())).c_str());
}

NameCharacters::~NameCharacters() {
    std::setlocale(LC_CTYPE, old_.c_str());
}

}  // namespace quillmark
