#pragma once

#include <string>
#include <vector>

#include "quillmark/description.h"
#include "source.h"

namespace quillmark::python {

/// The name of a file as the system has it, of a str, bytes or os.PathLike.
std::string fileName(const py::object& path);

/// Those of a list of paths, which the argument `what` is. Raises TypeError for a single one.
std::vector<std::string> fileNames(const py::iterable& paths, const std::string& what);

/// Reads what a path names, what an object with a buffer holds, or what a binary file gives,
/// without the lock of the interpreter. An empty name is the path, the name of the file, or
/// "<bytes>". Raises OSError for a file that cannot be opened; if strict, quillmark.Error for one
/// with an error.
SourcePointer readSource(const py::object& source, const std::string& name,
                         const ReadOptions& options, bool strict);

/// The same, or the description itself where it is one already.
SourcePointer descriptionOf(const py::object& source, const ReadOptions& options);

/// Description and read().
void declareReading(py::module_& module);

}  // namespace quillmark::python
