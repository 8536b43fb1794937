#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/input_file.h"

namespace quillmark::preparing {

/// In what form the bytes of a file are kept.
struct StoredForm {
    enum class Characters : std::uint8_t {
        Bytes,    ///< ISO 8859-1, a code page, or UTF-8: for the reader each byte is a character
        Utf8,     ///< UTF-8 with its mark
        Utf16Le,  ///< UTF-16, the low byte first
        Utf16Be,
    };

    Characters characters = Characters::Bytes;
    bool hasMark = false;   ///< that tells the characters
    bool isPacked = false;  ///< by gzip

    [[nodiscard]] bool isUtf16() const {
        return characters == Characters::Utf16Le || characters == Characters::Utf16Be;
    }
};

/// Gives a file's text: unpacked, UTF-16 as UTF-8, and without a mark of either.
class DecodedInput {
  public:
    explicit DecodedInput(std::unique_ptr<InputFile> stored);
    DecodedInput(DecodedInput&&) noexcept;
    DecodedInput& operator=(DecodedInput&&) noexcept;
    ~DecodedInput();

    [[nodiscard]] const StoredForm& form() const { return form_; }

    /// As InputFile::read().
    std::size_t read(char* buffer, std::size_t size) { return text_->read(buffer, size); }

    /// Whether the text is not whole: the file could not be read to its end, or what packs it is
    /// damaged.
    [[nodiscard]] bool failed() const { return text_->failed(); }

  private:
    StoredForm form_;
    std::unique_ptr<InputFile> text_;
};

}  // namespace quillmark::preparing
