#pragma once

#include <cstdint>

// The structures in which programs hand each other tables in memory, member by member as the Arrow
// C data interface and the Arrow C stream interface (https://arrow.apache.org/docs/format) lay them
// down, names included. Whoever has one calls its `release`, once; it is null in one that was
// released or moved away.
extern "C" {

// NOLINTBEGIN(readability-identifier-naming): the names of that interface

struct ArrowSchema {
    const char* format;
    const char* name;
    const char* metadata;
    std::int64_t flags;
    std::int64_t n_children;
    ArrowSchema** children;
    ArrowSchema* dictionary;
    void (*release)(ArrowSchema*);
    void* private_data;
};

struct ArrowArray {
    std::int64_t length;
    std::int64_t null_count;
    std::int64_t offset;
    std::int64_t n_buffers;
    std::int64_t n_children;
    const void** buffers;
    ArrowArray** children;
    ArrowArray* dictionary;
    void (*release)(ArrowArray*);
    void* private_data;
};

struct ArrowArrayStream {
    int (*get_schema)(ArrowArrayStream*, ArrowSchema* out);
    int (*get_next)(ArrowArrayStream*, ArrowArray* out);
    const char* (*get_last_error)(ArrowArrayStream*);
    void (*release)(ArrowArrayStream*);
    void* private_data;
};

// NOLINTEND(readability-identifier-naming)

}  // extern "C"
