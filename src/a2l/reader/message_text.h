#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string_view>

namespace quillmark {

/// One thing that a message format names: a text for %s or an integer for %d.
class MessageArgument {
  public:
    MessageArgument(std::string_view text) : text_(text) {}  // NOLINT: meant to convert
    MessageArgument(const char* text) : text_(text) {}       // NOLINT
    MessageArgument(std::int32_t number) : number_(number), isNumber_(true) {}  // NOLINT

  private:
    friend class MessageText;

    std::string_view text_;
    std::int32_t number_ = 0;
    bool isNumber_ = false;
};

/// A message made from a format with %s and %d; a % that ends the format stands for itself. It
/// holds at most 499 bytes; what is longer is cut, which also cuts the line feed of a too long
/// line.
class MessageText {
  public:
    static constexpr std::size_t kCapacity = 499;

    explicit MessageText(std::string_view format,
                         std::initializer_list<MessageArgument> arguments = {});

    std::string_view view() const { return {buffer_.data(), length_}; }

  private:
    void append(std::string_view text);
    void append(const MessageArgument& argument);

    std::size_t length_ = 0;
    std::array<char, kCapacity> buffer_;
};

}  // namespace quillmark
