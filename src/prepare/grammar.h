#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace quillmark::preparing {

// What the reader takes in which block, and what version 1.7 adds, as data. The tables have to
// agree with the reader's own: a new keyword there needs its row here.

struct Layout;

/// How an optional part of a block stands in the text.
enum class Form : std::uint8_t {
    Bare,   ///< KEYWORD and its parameters
    Block,  ///< /begin KEYWORD ... /end KEYWORD
};

/// What becomes of a part.
enum class Fate : std::uint8_t {
    Keep,      ///< the reader takes it
    TakeOut,   ///< of version 1.7; nothing that the reader knows depends on it
    Address,   ///< ADDRESS_TYPE: harmless if DIRECT, else the signal cannot be measured
    Encoding,  ///< ENCODING of a text: harmless if its characters are bytes
};

/// One optional part of a block.
///
/// `parameters` has one character for each parameter, or for several that are read at once:
///
///     .  any token                       i  all names that follow
///     I  a name                          s  all texts
///     N  a name or a text                #  all numbers
///     S  a text, or NULL for none        z  all integers
///     X  a text                          k  up to three numbers
///     M  a text or a number              n  a number, if there is one
///     F  a number                        j  an integer, if there is one
///     Z  an integer                      t  a text, if there is one
///     T  data type of a measurement      P  a number of pairs of numbers, and these
///     O  the byte order of XCP           V  a number of numbers with a text, and these
///     w  a word in word mode             Q  a number of pairs with a text, and these
///     W  the same, which is a text       R  all RASTER with a number each
///     c  a cycle and the code of its unit
///     C  the modes of communication      E  all EVENT with a number each
///     a  FIXED or VARIABLE, and a value  G  up to two target addresses
///     D  the contents of an interface block
struct PartRule {
    Form form;
    std::string_view keyword;
    std::string_view parameters = {};
    const Layout* inner = nullptr;  ///< of a block; without one it is not looked into
    Fate fate = Fate::Keep;
    std::uint32_t look = 0;  ///< what tells most other keywords from this one
};

/// The contents of a block: parameters and then optional parts in any order.
struct Layout {
    std::string_view parameters;
    std::span<const PartRule> parts;
    /// In interface blocks the reader skips blocks that it does not know.
    bool skipsUnknownBlocks = false;
};

/// The part with this keyword, or nullptr.
const PartRule* findPart(const Layout& layout, Form form, std::string_view keyword);

/// What may stand in a project besides modules, and in a module; all of them are blocks.
const PartRule* findProjectBlock(std::string_view keyword);
const PartRule* findModuleBlock(std::string_view keyword);

/// What stands in the block of an interface of this name behind the name; nullptr for an interface
/// that the reader does not look into.
const Layout* findInterface(std::string_view name);

/// Whether a word is the data type of a measurement.
bool isMeasurementType(std::string_view word);

/// Whether the reader takes a word for a name: words of its own are none.
bool isNameWord(std::string_view word);

/// Whether it takes a text for a single one.
bool isName(std::string_view text);

}  // namespace quillmark::preparing
