#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace quillmark {

/// Turns UTF-16 into UTF-8, piece by piece. The system's own converter does it: iconv of the C
/// library, on Windows the one of the system. What is no text (half of a surrogate pair, an odd
/// byte at the end) becomes U+FFFD.
class Utf16Decoder {
  public:
    explicit Utf16Decoder(bool highByteFirst);
    Utf16Decoder(const Utf16Decoder&) = delete;
    Utf16Decoder& operator=(const Utf16Decoder&) = delete;
    ~Utf16Decoder();

    /// Appends what the bytes say to `utf8`. A character that they only begin is kept for the next
    /// piece.
    void decode(std::string_view bytes, std::string& utf8);

    /// Appends what is left of a character that was never completed.
    void finish(std::string& utf8);

  private:
    struct System;
    std::unique_ptr<System> system_;
    /// The first bytes of a character, fewer than four.
    std::string begun_;
};

}  // namespace quillmark
