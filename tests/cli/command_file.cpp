#include "cli/command_file.h"

#include <cstddef>

namespace quillmark::golden {

std::optional<Arguments> splitCommand(std::string_view line) {
    Arguments arguments;
    std::string current;
    bool inArgument = false;
    char quote = '\0';
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (quote == '\0' && (c == ' ' || c == '\t')) {
            if (inArgument) {
                arguments.push_back(current);
                current.clear();
                inArgument = false;
            }
            continue;
        }
        inArgument = true;
        if (c == quote) {
            quote = '\0';
        } else if (quote == '\0' && (c == '\'' || c == '"')) {
            quote = c;
        } else if (c == '\\' && quote != '\'' && i + 1 < line.size()) {
            ++i;
            current += line[i];
        } else {
            current += c;
        }
    }
    if (quote != '\0') {
        return std::nullopt;
    }
    if (inArgument) {
        arguments.push_back(current);
    }
    return arguments;
}

std::vector<std::string_view> splitLines(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        lines.push_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return lines;
}

}  // namespace quillmark::golden
