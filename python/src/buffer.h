#pragma once

#include <string_view>

#include "source.h"

namespace quillmark::python {

/// The bytes of a Python object such as bytes, bytearray or memoryview, which stay in place as long
/// as this lives. Raises TypeError for an object without.
class Buffer {
  public:
    explicit Buffer(const py::handle& object) {
        if (PyObject_GetBuffer(object.ptr(), &view_, PyBUF_SIMPLE) != 0) {
            throw py::error_already_set();
        }
    }
    Buffer(const Buffer&) = delete;
    Buffer& operator=(const Buffer&) = delete;
    ~Buffer() { PyBuffer_Release(&view_); }

    [[nodiscard]] std::string_view bytes() const {
        return {static_cast<const char*>(view_.buf), static_cast<std::size_t>(view_.len)};
    }

  private:
    Py_buffer view_{};
};

}  // namespace quillmark::python
