#pragma once

#include <string_view>

#include "edges/version_info.h"

namespace quillmark {

class Console;

/// Reads the content of a version file. Returns false when it is not well-formed XML to its end;
/// `info` is of no use then. Elements that are missing leave their part of `info` empty.
///
/// A file that is written plainly, as the one that comes with the program, is read here: printable
/// ASCII, elements without attributes, comments, and at most the usual declaration. Any other needs
/// an XML reader (edges/edges.h), which takes several times as long to load as a small description
/// to convert. If there is none, standard error is told why.
[[nodiscard]] bool parseVersionFile(std::string_view bytes, VersionInfo& info, Console& console);

/// The first half of that: false when the file is not written plainly, well-formed or not.
[[nodiscard]] bool parsePlainVersionFile(std::string_view bytes, VersionInfo& info);

}  // namespace quillmark
