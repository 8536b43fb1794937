#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "a2l/parsing.h"

namespace quillmark {

/// The lines of a dump that stand below the first line which begins with `heading`, not indented.
inline std::string dumpBelow(std::string_view heading, std::string_view dump) {
    std::string result;
    std::size_t depth = std::string_view::npos;
    while (!dump.empty()) {
        const std::size_t end = dump.find('\n') + 1;
        const std::string_view line = dump.substr(0, end);
        dump.remove_prefix(end);
        const std::size_t indent = line.find_first_not_of(' ');
        if (depth == std::string_view::npos) {
            if (line.substr(indent).starts_with(heading)) {
                depth = indent;
            }
        } else if (indent > depth) {
            result += line.substr(depth + 2);
        } else {
            break;
        }
    }
    return result;
}

/// Reads `text` cut off before each of its blanks and line feeds, which is after each token where
/// comments and quoted texts have none. Calls `check(cut, parsed)` each time.
template <typename Check>
void cutAfterEachToken(std::string_view text, Check check) {
    constexpr std::string_view kBlanks = " \n";
    for (std::size_t end = 1; end < text.size(); ++end) {
        if (kBlanks.find(text[end]) != std::string_view::npos &&
            kBlanks.find(text[end - 1]) == std::string_view::npos) {
            const std::string_view cut = text.substr(0, end);
            check(cut, parseText(cut));
        }
    }
}

}  // namespace quillmark
