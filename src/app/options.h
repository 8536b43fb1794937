#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/console.h"

namespace quillmark {

/// What an option does that is given once more.
enum class Repetition {
    Replaces,  ///< the last value wins
    Warns,     ///< a message, and that is all
    Refused,
};

/// What a shell offers where the argument of an option stands.
enum class Offer { Nothing, Libraries, FileList, Packages };

/// An option, as far as it does not matter what it fills. The usage text, the man page and the
/// completions are made from this.
struct Option {
    std::string_view word;
    /// What the usage text says behind the word.
    std::string_view usage;
    /// A few words on what it does, for shells.
    std::string_view summary;
    /// Its paragraph in the man page, in mdoc(7).
    std::string_view manual;
    /// What the man page calls its argument; empty for an option without one.
    std::string_view argument = {};
    Offer offer = Offer::Nothing;
    Repetition repetition = Repetition::Replaces;
    std::string_view repeatedText = {};
    /// The refusal where the argument is missing.
    std::string_view missingText = {};
};

/// One option of a command whose arguments fill a Request.
template <typename Request>
struct OptionRow {
    Option option;
    /// The field that it fills. A text takes the very next argument, whatever that looks like; a
    /// text that is empty counts as not given yet.
    std::variant<std::string Request::*, bool Request::*> target;

    constexpr std::string_view word() const { return option.word; }
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
        const Option& option = row->option;
        const bool repeated = isGiven(*row, request);
        if (repeated && option.repetition == Repetition::Refused) {
            return option.repeatedText;
        }
        if (repeated && option.repetition == Repetition::Warns) {
            console.printLine(option.repeatedText);
        }
        if (const auto* flag = std::get_if<bool Request::*>(&row->target)) {
            request.*(*flag) = true;
            continue;
        }
        if (++i == arguments.size()) {
            return option.missingText;
        }
        request.*(std::get<std::string Request::*>(row->target)) = arguments[i];
    }
    return {};
}

/// The options of these rows, in their order.
template <typename Request, std::size_t Count>
std::vector<Option> optionsOf(const OptionRow<Request> (&rows)[Count]) {
    std::vector<Option> options;
    std::ranges::transform(rows, std::back_inserter(options), &OptionRow<Request>::option);
    return options;
}

}  // namespace quillmark
