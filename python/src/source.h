#pragma once

#include <memory>
#include <mutex>

#include <pybind11/pybind11.h>

#include "quillmark/description.h"
#include "quillmark/model.h"

namespace quillmark::python {

namespace py = pybind11;

/// A description in the hands of Python. Each view shares it, so that no view outlives what it
/// looks at.
struct Source {
    Description description;

    /// Held while something searches by name, converts or compares, which a description allows one
    /// thread at a time.
    std::mutex working;
};
using SourcePointer = std::shared_ptr<Source>;

/// A view as Python has it.
template <typename View>
struct Held {
    SourcePointer source;
    View view;
};

class ConversionFunction;

/// Keeps what it calculates with from the first call on.
template <>
struct Held<Conversion> {
    SourcePointer source;
    Conversion view;
    mutable std::shared_ptr<const ConversionFunction> function;
};

/// Holds the description for a piece of work. Whoever has to wait does so without the lock of the
/// interpreter, with which it is called.
inline std::unique_lock<std::mutex> holdForWork(Source& source) {
    std::unique_lock<std::mutex> lock(source.working, std::try_to_lock);
    if (!lock) {
        const py::gil_scoped_release release;
        lock.lock();
    }
    return lock;
}

}  // namespace quillmark::python
