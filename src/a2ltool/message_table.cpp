#include "a2ltool/message_table.h"

#include <algorithm>
#include <cstddef>

namespace quillmark::a2ltool {
namespace {

constexpr MessageRow kMessages[] = {
    // Errors of the reader.
    {"unexpected-token", Severity::Error, "Unexpected token '%s' found",
     "Nothing that may stand here: a keyword of a later standard, a misspelt one, a parameter too "
     "much, the end of a file that is cut off; in a measurement, an unknown data type. See "
     "`docs/a2l-support.md` for what is known where."},
    {"name-expected", Severity::Error, "Identifier expected",
     "A name is missing, or is quoted, or is spelled like a keyword."},
    {"text-expected", Severity::Error, "String expected", "A quoted text is missing."},
    {"unit-expected", Severity::Error, "String expected (Unit)",
     "The unit of a conversion is missing."},
    {"event-name-expected", Severity::Error, "String or Identifier expected",
     "The name of an XCP `EVENT` or a CCP `RASTER` is missing."},
    {"wrong-end-of-interface", Severity::Error, "Keyword 'IF_DATA' expected after /end",
     "An interface block is closed under another name."},
    {"wrong-end-of-skipped-block", Severity::Error, "Keyword '%s' expected after /end (IGN)",
     "A block that is skipped is closed under another name."},
    {"wrong-end", Severity::Error, "Keyword '%s' expected after /end",
     "A block is closed under another name; the line is a good place to look for a missing "
     "`/end`."},
    {"file-name-expected", Severity::Error, "Filename expected",
     "`/include` without a quoted file name."},
    {"element-count-expected", Severity::Error, "Integer value (element count) expected",
     "A table does not say how long it is."},
    {"number-expected", Severity::Error, "Double or integer value expected",
     "A table has fewer values than it says, or a word among them."},
    {"value-text-expected", Severity::Error, "String value expected",
     "A verbal table has a value without its text."},
    {"cycle-unreadable", Severity::Error, "Could not read TIME_CYCLE or TIME_UNIT",
     "The cycle of an XCP `EVENT` or `MIN_CYCLE_TIME` is no number."},
    {"time-unit-unknown", Severity::Error, "Could not convert TIME_UNIT",
     "The code of a time unit is none of the standard's."},
    {"unfinished-text", Severity::Error, "Unexpected EOF in string",
     "A quoted text has no end; an error about the unfinished token follows."},
    {"unfinished-comment", Severity::Error, "Error: Unexpected EOF in Comment (Line %d)",
     "A `/*` has no `*/`; the number is the line where it begins."},

    // Warnings of the reader.
    {"unexpected-parameter", Severity::Warning, "Unexpected token '%s' found",
     "A parameter is none of the words or numbers that it may be: the kind of a conversion, a byte "
     "order, an address, a memory segment's attribute."},
    {"no-inverse", Severity::Warning, "Unable to compute inverse function in conversion '%s'",
     "`COEFFS` whose inverse is no linear fraction. The conversion is written as a `ratfunc` whose "
     "six coefficients are 0, and signals name it; take other coefficients or no conversion."},
    {"lower-limit-type", Severity::Warning, "Unexpected type for lower limit.",
     "The lower limit is no number."},
    {"upper-limit-type", Severity::Warning, "Unexpected type for upper limit.",
     "The upper limit is no number."},
    {"array-size", Severity::Warning, "Array-size mismatch (%d).",
     "`ARRAY_SIZE` is not the product of `MATRIX_DIM`, which wins."},
    {"unexpected-layout", Severity::Warning, "Unexpected LAYOUT '%s'",
     "Neither `ROW_DIR` nor `COLUMN_DIR`."},
    {"unexpected-storage-type", Severity::Warning, "Unexpected storage type '%s'.",
     "A `CHARACTERISTIC` of unknown kind; it is written as a measurement."},
    {"daq-list-type", Severity::Warning, "Unexpected token for DAQ_LIST_TYPE: %d",
     "An unknown direction of a DAQ list."},
    {"packet-alignment", Severity::Warning, "Unexpected token for Packet-Alignment: %d",
     "None of `PACKET_ALIGNMENT_8`, `_16`, `_32`."},
    {"header-type", Severity::Warning, "Unexpected token for Header-Type: %d",
     "An unknown header type of XCP on FlexRay."},
    {"ccp-byte-order-word", Severity::Warning, "Invalid Byteorder '%s' in ASAP1B_CCP/TP_BLOB",
     "A word other than `MSB_FIRST` and `MSB_LAST`."},
    {"ccp-byte-order", Severity::Warning, "Invalid Byteorder %d in ASAP1B_CCP/TP_BLOB",
     "Neither 1 (MSB first) nor 2 (MSB last). Also follows the message about a wrong word."},
    {"gmlan-byte-order", Severity::Warning, "Invalid Byteorder %d in ASAP1B_GMLAN/TP_BLOB",
     "Neither `BYTEORDER_MSB_FIRST` nor `BYTEORDER_MSB_LAST`."},

    // What keeps a description that was read from being written.
    {"missing-epk", Severity::Error, "missing version",
     "A module with CCP or XCP has no `EPK` in its `MOD_PAR`, so that the logger could not "
     "recognise the unit."},
    {"missing-epk-address", Severity::Error, "missing epk address",
     "A module with CCP or XCP has no `ADDR_EPK` in its `MOD_PAR`."},

    // What this program adds.
    {"cannot-open", Severity::Error, "cannot be opened", "The file is missing or may not be read."},
};

/// Whether a text is what the pattern says, each %s and %d of which stands for anything.
bool matches(std::string_view pattern, std::string_view text) {
    const std::size_t variable = std::min(pattern.find("%s"), pattern.find("%d"));
    if (variable == std::string_view::npos) {
        return text == pattern;
    }
    if (!text.starts_with(pattern.substr(0, variable))) {
        return false;
    }
    // No pattern has more than one variable.
    text.remove_prefix(variable);
    pattern.remove_prefix(variable + std::string_view("%s").size());
    return text.ends_with(pattern);
}

}  // namespace

std::span<const MessageRow> messageTable() {
    return kMessages;
}

const MessageRow* findMessage(Severity severity, std::string_view text) {
    const auto* const row =
        std::find_if(std::begin(kMessages), std::end(kMessages), [&](const MessageRow& each) {
            return each.severity == severity && matches(each.text, text);
        });
    return row == std::end(kMessages) ? nullptr : row;
}

}  // namespace quillmark::a2ltool
