#pragma once

#include <cstddef>
#include <optional>
#include <span>

#include "a2l/reader/block_reader.h"
#include "a2l/reader/word_row.h"
#include "a2l/tokens/keyword_tables.h"

namespace quillmark {

/// Reads an enumerated parameter of a core block: one word, with the enumeration table current.
/// Nothing when it is none of the words, after `onMiss(kind)`, which is called while the
/// enumeration table still names the token.
template <typename Value, typename OnMiss>
std::optional<Value> readChoiceOr(BlockReader& reader, std::span<const WordRow<Value>> words,
                                  OnMiss onMiss) {
    reader.useKeywords(kWordKeywords);
    const int kind = reader.next();
    const std::optional<Value> found = findWord(reader, words, kind);
    if (!found) {
        onMiss(kind);
    }
    reader.useKeywords(kCoreKeywords);
    return found;
}

/// The same for a parameter that may be wrong: the warning "Unexpected token '%s' found" and the
/// value for "undefined".
template <typename Value>
Value readChoice(BlockReader& reader, std::span<const WordRow<Value>> words, Value undefined = {}) {
    return readChoiceOr(reader, words, [&](int kind) { reader.unexpectedTokenWarning(kind); })
        .value_or(undefined);
}
template <typename Value, std::size_t Count>
Value readChoice(BlockReader& reader, const WordRow<Value> (&words)[Count], Value undefined = {}) {
    return readChoice(reader, std::span<const WordRow<Value>>(words), undefined);
}

}  // namespace quillmark
