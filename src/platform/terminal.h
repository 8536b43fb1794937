#pragma once

namespace quillmark {

/// Whether standard output is a terminal that understands the usual sequences for colours; one of
/// Windows is told to.
bool standardOutputShowsColors();

}  // namespace quillmark
