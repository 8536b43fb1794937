#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "source.h"

namespace quillmark::python {

/// Memory that Arrow reads, shared by all that look at it.
using ArrowBuffer = std::shared_ptr<const void>;

template <typename T>
ArrowBuffer arrowBuffer(std::vector<T> values) {
    const auto owner = std::make_shared<const std::vector<T>>(std::move(values));
    return {owner, owner->data()};
}

/// An array with its type, and what it is made of: a column, or a table with its columns.
struct ArrowNode {
    const char* format = "";  ///< as the Arrow C data interface names types
    const char* name = "";
    bool isNullable = false;
    std::int64_t length = 0;
    std::int64_t absentCount = 0;
    std::vector<ArrowBuffer> buffers = {};  ///< the first one tells which values are there
    std::vector<ArrowNode> children = {};
    std::unique_ptr<ArrowNode> dictionary = {};

    /// Marks the values for whose index `isAbsent` is true.
    template <typename IsAbsent>
    void setAbsent(const IsAbsent& isAbsent) {
        constexpr std::size_t kBits = 8;
        const auto count = static_cast<std::size_t>(length);
        std::vector<std::uint8_t> present((count + kBits - 1) / kBits);
        for (std::size_t i = 0; i < count; ++i) {
            const bool isPresent = !isAbsent(i);
            present[i / kBits] |= static_cast<std::uint8_t>(isPresent ? 1U << i % kBits : 0U);
            absentCount += isPresent ? 0 : 1;
        }
        isNullable = true;
        buffers.front() = arrowBuffer(std::move(present));
    }
};

/// The table as a stream of one batch, in a capsule that owns it. Whoever takes it from there needs
/// neither the description nor the interpreter.
py::capsule arrowStream(ArrowNode table);

}  // namespace quillmark::python
