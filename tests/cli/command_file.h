#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillmark::golden {

/// The arguments of one run, without the program's own name.
using Arguments = std::vector<std::string>;

/// Splits one line as a shell would: at blanks, except inside single or double quotes; inside
/// double quotes and outside of any a backslash takes the next character as it is. Nothing is
/// expanded. Nothing if a quote is left open.
std::optional<Arguments> splitCommand(std::string_view line);

/// Cuts a text at its line feeds; a last line needs none.
std::vector<std::string_view> splitLines(std::string_view text);

}  // namespace quillmark::golden
