#include <array>
#include <cerrno>

#include <iconv.h>

#include "platform/utf16_text.h"

namespace quillmark {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

}  // namespace

struct Utf16Decoder::System {
    explicit System(bool highByteFirst)
        : converter(iconv_open("UTF-8", highByteFirst ? "UTF-16BE" : "UTF-16LE")) {}
    System(const System&) = delete;
    System& operator=(const System&) = delete;
    ~System() { iconv_close(converter); }

    iconv_t converter;
};

Utf16Decoder::Utf16Decoder(bool highByteFirst) : system_(std::make_unique<System>(highByteFirst)) {}

Utf16Decoder::~Utf16Decoder() = default;

void Utf16Decoder::decode(std::string_view bytes, std::string& utf8) {
    begun_ += bytes;
    char* from = begun_.data();
    std::size_t left = begun_.size();
    std::array<char, 4096> block;
    while (left > 0) {
        char* to = block.data();
        std::size_t room = block.size();
        errno = 0;
        const std::size_t status = iconv(system_->converter, &from, &left, &to, &room);
        const int trouble = status == static_cast<std::size_t>(-1) ? errno : 0;
        utf8.append(block.data(), block.size() - room);
        if (trouble == EILSEQ) {
            constexpr std::size_t kUnit = 2;
            utf8 += kReplacement;
            from += kUnit;
            left -= kUnit;
        } else if (trouble != 0 && trouble != E2BIG) {
            break;
        }
    }
    begun_.erase(0, begun_.size() - left);
}

void Utf16Decoder::finish(std::string& utf8) {
    if (!begun_.empty()) {
        utf8 += kReplacement;
        begun_.clear();
    }
}

}  // namespace quillmark
