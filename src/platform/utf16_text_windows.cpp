#include <windows.h>

#include "platform/utf16_text.h"

namespace quillmark {

struct Utf16Decoder::System {
    bool highByteFirst;
};

Utf16Decoder::Utf16Decoder(bool highByteFirst)
    : system_(std::make_unique<System>(System{highByteFirst})) {}

Utf16Decoder::~Utf16Decoder() = default;

void Utf16Decoder::decode(std::string_view bytes, std::string& utf8) {
    constexpr std::size_t kUnit = 2;
    begun_ += bytes;
    std::wstring units;
    units.reserve(begun_.size() / kUnit);
    const std::size_t low = system_->highByteFirst ? 1 : 0;
    for (std::size_t i = 0; i + kUnit <= begun_.size(); i += kUnit) {
        const unsigned lowByte = static_cast<unsigned char>(begun_[i + low]);
        const unsigned highByte = static_cast<unsigned char>(begun_[i + 1 - low]);
        units += static_cast<wchar_t>(highByte << 8U | lowByte);
    }
    // The other half of the last character may still come.
    if (!units.empty() && IS_HIGH_SURROGATE(units.back())) {
        units.pop_back();
    }
    begun_.erase(0, units.size() * kUnit);
    if (units.empty()) {
        return;
    }
    const int count = static_cast<int>(units.size());
    const int size =
        WideCharToMultiByte(CP_UTF8, 0, units.data(), count, nullptr, 0, nullptr, nullptr);
    const std::size_t used = utf8.size();
    utf8.resize(used + static_cast<std::size_t>(size));
    WideCharToMultiByte(CP_UTF8, 0, units.data(), count, utf8.data() + used, size, nullptr,
                        nullptr);
}

void Utf16Decoder::finish(std::string& utf8) {
    if (!begun_.empty()) {
        utf8 += "\xEF\xBF\xBD";
        begun_.clear();
    }
}

}  // namespace quillmark
