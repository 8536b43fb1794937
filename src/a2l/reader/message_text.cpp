#include "a2l/reader/message_text.h"

#include <algorithm>
#include <charconv>

namespace quillmark {

MessageText::MessageText(std::string_view format,
                         std::initializer_list<MessageArgument> arguments) {
    const auto* argument = arguments.begin();
    for (;;) {
        const std::size_t percent = format.find('%');
        if (percent == std::string_view::npos || percent + 1 == format.size()) {
            append(format);
            return;
        }
        append(format.substr(0, percent));
        if (argument == arguments.end()) {
            return;
        }
        append(*argument++);
        format.remove_prefix(percent + 2);
    }
}

void MessageText::append(std::string_view text) {
    const std::size_t taken = std::min(text.size(), kCapacity - length_);
    std::copy_n(text.data(), taken, buffer_.data() + length_);
    length_ += taken;
}

void MessageText::append(const MessageArgument& argument) {
    if (!argument.isNumber_) {
        append(argument.text_);
        return;
    }
    std::array<char, 16> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), argument.number_);
    append(std::string_view(digits.data(), static_cast<std::size_t>(end.ptr - digits.data())));
}

}  // namespace quillmark
