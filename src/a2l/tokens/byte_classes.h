#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace quillmark {

/// A set of classes of bytes, of which each table names its own.
using ByteClass = std::uint16_t;

/// All of these bytes are of these classes, and of those that other rows tell.
struct ByteClassRow {
    std::string_view bytes;
    ByteClass classes;
};

/// The classes of each byte.
constexpr std::array<ByteClass, 256> collectByteClasses(std::span<const ByteClassRow> rows) {
    std::array<ByteClass, 256> classes{};
    for (const ByteClassRow& row : rows) {
        for (const char byte : row.bytes) {
            ByteClass& entry = classes[static_cast<unsigned char>(byte)];
            entry = static_cast<ByteClass>(entry | row.classes);
        }
    }
    return classes;
}

}  // namespace quillmark
