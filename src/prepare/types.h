#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "prepare/block_walk.h"
#include "prepare/report.h"

namespace quillmark::preparing {

// Offsets count modulo 2^64; of addresses, 32 bits count in the end.
std::int64_t offsetSum(std::int64_t a, std::int64_t b);
std::int64_t offsetProduct(std::int64_t a, std::int64_t b);

/// How many of something lie one behind the other, and in which order.
struct Array {
    /// As the reader takes the sizes of a MEASUREMENT: sizes of 1 at the end count for nothing, and
    /// the first size of 0 or less ends the list. None: it is no array.
    std::vector<std::int64_t> sizes;
    /// Whether the first index is the contiguous one (ROW_DIR); nothing where none is told.
    std::optional<bool> isRowWise;

    [[nodiscard]] bool isRowWiseOr(bool otherwise) const { return isRowWise.value_or(otherwise); }

    /// The product of the sizes; the largest number where it does not fit.
    [[nodiscard]] std::uint64_t count() const;
};

/// A part of a block, as it is written.
struct WrittenPart {
    const PartRule* rule;
    std::string text;

    [[nodiscard]] std::string_view keyword() const { return rule->keyword; }
};

struct Type;

/// A component of a structure, or an instance: something of a type at an address.
struct Member {
    std::string name;
    std::string typeName;
    const Type* type = nullptr;  ///< nullptr if it is nowhere defined
    std::int64_t offset = 0;     ///< bytes from the structure's start; the address of an instance
    Array array;
    bool isPointer = false;  ///< the address holds another address
    Place place;
};

/// A TYPEDEF block.
struct Type {
    enum class Kind : std::uint8_t { Structure, Measurement, Characteristic, Axis, Blob };

    Kind kind;
    std::string name;
    Place place;
    std::vector<std::string> parameters;  ///< all of them as they are written, the name first
    std::vector<WrittenPart> parts;       ///< without MATRIX_DIM and LAYOUT of measurements
    std::vector<Member> components;       ///< of a structure
    std::int64_t size = 0;                ///< of a structure or blob, in bytes
    Array array;                          ///< of a measurement
    bool isPointer = false;

    [[nodiscard]] const WrittenPart* find(std::string_view keyword) const;
};

/// The data types of values and what a record layout aligns each of them to.
struct ValueType {
    std::string_view name;
    std::int64_t size;  ///< bytes
    std::string_view alignment;
};

/// nullptr for a word that is none.
const ValueType* findValueType(std::string_view name);

/// Borders in bytes by keyword, ALIGNMENT_BYTE and its like.
using Alignments = std::map<std::string, std::int64_t, std::less<>>;

/// A RECORD_LAYOUT: the components that take room, and the borders that they are moved to.
struct RecordLayout {
    struct Component {
        std::string keyword;
        std::int64_t position;
        std::vector<std::string> parameters;  ///< behind the position
    };

    std::vector<Component> components;
    Alignments alignments;
    std::map<std::string, std::int64_t, std::less<>> fixedPoints;  ///< by X, Y, Z, 4, 5
};

/// Makes a type of a TYPEDEF block that has been taken apart; nothing of a broken one.
std::unique_ptr<Type> readType(std::string_view keyword, const BlockWalk& walk, Place place);

/// The same of an INSTANCE.
std::optional<Member> readInstance(const BlockWalk& walk, Place place);

/// The same of a RECORD_LAYOUT.
RecordLayout readRecordLayout(const BlockWalk& walk);

/// Adds the borders that a MOD_COMMON or RECORD_LAYOUT tells.
void readAlignments(const BlockWalk& walk, Alignments& alignments);

/// The sizes that a MATRIX_DIM tells, as the reader takes them.
std::vector<std::int64_t> readSizes(std::string_view matrixDim);

/// Whether a BYTE_ORDER is one of those that swap words.
bool isWordSwapped(std::string_view byteOrder);

/// Whether an ADDRESS_TYPE says that the address holds another one.
bool isPointerType(std::string_view addressType);

/// The word or number behind a part's keyword.
std::string_view valueOf(std::string_view part);

/// The tokens of a piece of text.
std::vector<std::string_view> wordsOf(std::string_view text);

/// How many bytes a characteristic or the points of an axis take, after its record layout; nothing
/// if that cannot be told.
std::optional<std::int64_t> sizeOf(const Type& type, const RecordLayout& layout,
                                   const Alignments& moduleAlignments);

}  // namespace quillmark::preparing
