#pragma once

#include <cstddef>
#include <string>

#include <sys/types.h>

namespace quillmark {

/// The calls of the system that move a copy's bytes. Tests put some in place that fail.
struct CopyCalls {
    ssize_t (*read)(int descriptor, void* buffer, std::size_t size);
    ssize_t (*write)(int descriptor, const void* buffer, std::size_t size);
    int (*close)(int descriptor);
};

/// As copyFile(source, target), by way of these calls.
bool copyFile(const std::string& source, const std::string& target, const CopyCalls& calls);

}  // namespace quillmark
