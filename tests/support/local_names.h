#pragma once

#include <array>
#include <string>
#include <vector>

#include "support/system.h"

namespace quillmark {

/// Names of files that are not ASCII: all of them where a name is any bytes, on Windows those that
/// the code page of this process has. In two of the Japanese ones the second byte of a character is
/// that of a backslash.
inline std::vector<std::string> localNames() {
    struct Row {
        unsigned codePage;
        const char* name;
    };
    static constexpr std::array kRows = {
        Row{1252, "n\xf6tig.txt"},
        Row{1252, "\xc4\xe9\x80 \xff"},
        Row{1251, "\xef\xf0\xe8\xe2\xe5\xf2.txt"},
        Row{1251, "\xb8\xff \xb9"},
        Row{932, "\x95\x5c.txt"},
        Row{932, "\x83\x5c\x83\x74\x83\x67"},
        Row{932, "\xb1\xb2.txt"},
    };
    std::vector<std::string> names;
    for (const Row& row : kRows) {
        if (codePage() == kAnyBytes || codePage() == row.codePage) {
            names.emplace_back(row.name);
        }
    }
    return names;
}

}  // namespace quillmark
