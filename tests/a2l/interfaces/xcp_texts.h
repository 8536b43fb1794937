#pragma once

#include <string>
#include <string_view>

#include "a2l/parsing.h"

namespace quillmark {

/// A module's XCP block with this content. It begins on line 1.
inline std::string xcpBlock(std::string_view content) {
    return "/begin IF_DATA XCP " + std::string(content) + " /end IF_DATA";
}

/// What the block adds to the dump, below the line of the communication parameters and not
/// indented; the messages instead when there were any.
inline std::string xcpDump(std::string_view content) {
    constexpr std::string_view kFirstLine = "commParam XCP protocolType=XCP\n";
    constexpr std::size_t kIndent = 2;
    std::string dump = moduleDump(xcpBlock(content));
    if (!dump.starts_with(kFirstLine)) {
        return dump;
    }
    std::string result;
    std::string_view rest = dump;
    rest.remove_prefix(kFirstLine.size());
    while (!rest.empty()) {
        const std::size_t end = rest.find('\n') + 1;
        result += rest.substr(kIndent, end - kIndent);
        rest.remove_prefix(end);
    }
    return result;
}

/// The lines of a dump that begin with `word`, not indented.
inline std::string linesWith(std::string_view word, std::string_view dump) {
    std::string result;
    while (!dump.empty()) {
        const std::size_t end = dump.find('\n') + 1;
        std::string_view line = dump.substr(0, end);
        line.remove_prefix(line.find_first_not_of(' '));
        if (line.starts_with(word)) {
            result += line;
        }
        dump.remove_prefix(end);
    }
    return result;
}

inline std::string xcpMessages(std::string_view content) {
    return messages(xcpBlock(content));
}

/// Everything that a verbose reader prints about the block.
inline std::string xcpTrace(std::string_view content) {
    const std::string console = parseModule(xcpBlock(content), {.verbose = true}).console;
    const std::size_t start = console.find("-:   Parse IF_DATA XCP\n");
    return start == std::string::npos ? console : console.substr(start);
}

}  // namespace quillmark
