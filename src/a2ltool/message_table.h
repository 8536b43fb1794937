#pragma once

#include <span>
#include <string_view>

#include "quillmark/finding.h"

namespace quillmark::a2ltool {

/// A message about descriptions, and what to do about it. The table is where remedies are written;
/// docs/messages.md shows them, which the test docs.remedies watches.
struct MessageRow {
    std::string_view id;
    Severity severity;
    std::string_view text;  ///< %s and %d stand for anything
    std::string_view remedy;
};

/// The first row that matches a message is its.
std::span<const MessageRow> messageTable();

/// The row of a message, or nullptr.
const MessageRow* findMessage(Severity severity, std::string_view text);

}  // namespace quillmark::a2ltool
