#pragma once

#include <cstddef>
#include <string_view>

#include "a2l/reader/block_reader.h"
#include "a2l/tokens/keyword_tables.h"
#include "a2l/tokens/lexer.h"

namespace quillmark {

/// One word that an enumerated parameter takes: a keyword of the enumeration table or, for the
/// words of later versions of the standard that the table lacks, an identifier of that text.
template <typename Value>
struct WordRow {
    int kind;               ///< keyword, or TOK_IDENT
    std::string_view text;  ///< of an identifier
    Value value;
};

/// Reads one word with the enumeration table current and looks it up among `rows`; nullptr when it
/// is none of them, which `onMiss(kind)` is told while the enumeration table still names the token.
template <typename Value, std::size_t Count, typename OnMiss>
const WordRow<Value>* findChoice(BlockReader& reader, const WordRow<Value> (&rows)[Count],
                                 OnMiss onMiss) {
    reader.useKeywords(kWordKeywords);
    const int kind = reader.next();
    const WordRow<Value>* found = nullptr;
    for (const WordRow<Value>& row : rows) {
        if (row.kind == kind && (kind != TOK_IDENT || row.text == reader.token().text)) {
            found = &row;
            break;
        }
    }
    if (found == nullptr) {
        onMiss(kind);
    }
    reader.useKeywords(kCoreKeywords);
    return found;
}

/// The same for a parameter that may be wrong: the warning "Unexpected token '%s' found" and the
/// value for "undefined".
template <typename Value, std::size_t Count>
Value readChoice(BlockReader& reader, const WordRow<Value> (&rows)[Count], Value undefined = {}) {
    const auto* row =
        findChoice(reader, rows, [&](int kind) { reader.unexpectedTokenWarning(kind); });
    return row == nullptr ? undefined : row->value;
}

}  // namespace quillmark
