#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "platform/console.h"

namespace quillmark {

/// What an option does that is given once more.
enum class Repetition {
    replaces,  ///< the last value wins
    warns,     ///< a message, and that is all
    refused,
};

/// One option of a command whose arguments fill a Request.
template <typename Request>
struct OptionRow {
    std::string_view word;
    /// What the usage text says behind the word.
    std::string_view usage;
    /// The field that it fills. A text takes the very next argument, whatever that looks like; a
    /// text that is empty counts as not given yet.
    std::variant<std::string Request::*, bool Request::*> target;
    Repetition repetition;
    std::string_view repeatedText;
    /// The refusal where the argument for a text is missing.
    std::string_view missingText = {};
};

/// Whether the option's field shows that it was given before.
template <typename Request>
bool isGiven(const OptionRow<Request>& row, const Request& request) {
    if (const auto* flag = std::get_if<bool Request::*>(&row.target)) {
        return request.*(*flag);
    }
    return !(request.*(std::get<std::string Request::*>(row.target))).empty();
}

/// Reads the arguments behind the word of a command from left to right. What is the word of no row
/// is handed to `takePositional(argument)`, whatever it looks like. Returns the message of the
/// first mistake, or an empty text.
template <typename Request, std::size_t Count, typename TakePositional>
std::string_view readOptions(const OptionRow<Request> (&rows)[Count],
                             std::span<const char* const> arguments, Request& request,
                             Console& console, TakePositional takePositional) {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string_view argument = arguments[i];
        const auto* const row = std::ranges::find(rows, argument, &OptionRow<Request>::word);
        if (row == std::end(rows)) {
            takePositional(argument);
            continue;
        }
        const bool repeated = isGiven(*row, request);
        if (repeated && row->repetition == Repetition::refused) {
            return row->repeatedText;
        }
        if (repeated && row->repetition == Repetition::warns) {
            console.printLine(row->repeatedText);
        }
        if (const auto* flag = std::get_if<bool Request::*>(&row->target)) {
            request.*(*flag) = true;
            continue;
        }
        if (++i == arguments.size()) {
            return row->missingText;
        }
        request.*(std::get<std::string Request::*>(row->target)) = arguments[i];
    }
    return {};
}

/// Prints the lines of the usage text on these options.
template <typename Request, std::size_t Count>
void printOptionLines(const OptionRow<Request> (&rows)[Count], Console& console) {
    for (const OptionRow<Request>& row : rows) {
        console.printLine(std::string("          ").append(row.word).append(row.usage));
    }
}

}  // namespace quillmark
