#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

namespace quillmark {

/// A shared, counted byte string, the type of every text in the model. Copying shares the text; it
/// is freed with its last holder. A default-constructed PhString is null: it holds no text at all,
/// which is not the same as holding an empty one.
///
/// The whole string is one allocation of 8 bytes plus text and terminator, because a description
/// carries millions of them. Texts longer than kLongest are cut there.
class PhString {
  public:
    /// Bytes of the longest text; the whole allocation, rounded up, still counts in 32 bits then.
    static constexpr std::size_t kLongest = std::numeric_limits<std::uint32_t>::max() - 64;

    PhString() = default;
    explicit PhString(std::string_view text);
    PhString(std::string_view prefix, std::string_view text);
    PhString(const PhString& other) noexcept;
    PhString(PhString&& other) noexcept : record_(other.record_) { other.record_ = nullptr; }
    PhString& operator=(PhString other) noexcept;
    ~PhString();

    bool isNull() const { return record_ == nullptr; }

    /// Length in bytes; 0 for a null string.
    std::size_t length() const { return record_ == nullptr ? 0 : record_->length; }

    /// The zero-terminated text, or nullptr for a null string. Lives as long as any copy.
    const char* text() const { return record_ == nullptr ? nullptr : characters(record_); }

    /// The text as a view, empty for a null string.
    std::string_view view() const {
        return record_ == nullptr ? std::string_view()
                                  : std::string_view(characters(record_), record_->length);
    }

    /// The model's name hash: hash = byte + 2 * hash over all bytes, wrapping at 32 bits; 0 for a
    /// null string. It collides on serial names, so the name index uses one of its own.
    std::uint32_t hash() const;

    /// Bytewise order; a null string is greater than any text and equal to another null string.
    friend std::strong_ordering operator<=>(const PhString& left, const PhString& right);
    friend bool operator==(const PhString& left, const PhString& right);

  private:
    struct Record {
        std::uint32_t count;  ///< kImmortal for the one shared empty text
        std::uint32_t length;
    };

    static constexpr std::uint32_t kImmortal = 0xFFFFFFFFU;

    static Record* emptyRecord();
    static Record* allocate(std::size_t length);
    static char* characters(Record* record) { return reinterpret_cast<char*>(record + 1); }

    Record* record_ = nullptr;
};

}  // namespace quillmark
