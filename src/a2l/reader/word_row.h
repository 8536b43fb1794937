#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

#include "a2l/reader/block_reader.h"
#include "a2l/tokens/lexer.h"

namespace quillmark {

/// A word that is looked for: a keyword of the current table or, where the table lacks the word, an
/// identifier of that text.
class Word {
  public:
    constexpr Word(int keyword) : kind_(keyword) {}

    /// The kind of its token: the keyword, or TOK_IDENT.
    constexpr int kind() const { return kind_; }

    /// Whether the last token, which is of kind `kind`, is this word.
    bool isLast(const BlockReader& reader, int kind) const {
        return kind_ == kind && (kind != TOK_IDENT || text_ == reader.token().text);
    }

    friend constexpr Word identifier(std::string_view text);

  private:
    constexpr explicit Word(std::string_view text) : kind_(TOK_IDENT), text_(text) {}

    int kind_;
    std::string_view text_;  ///< of an identifier
};

/// A word that the keyword table lacks.
constexpr Word identifier(std::string_view text) {
    return Word(text);
}

/// One word that an enumerated parameter takes, and what it means.
template <typename Value>
struct WordRow {
    Word word;
    Value value;
};

/// What the last token, which is of kind `kind`, means; nothing when it is none of the words.
template <typename Value>
std::optional<Value> findWord(const BlockReader& reader, std::span<const WordRow<Value>> words,
                              int kind) {
    for (const WordRow<Value>& row : words) {
        if (row.word.isLast(reader, kind)) {
            return row.value;
        }
    }
    return std::nullopt;
}
template <typename Value, std::size_t Count>
std::optional<Value> findWord(const BlockReader& reader, const WordRow<Value> (&words)[Count],
                              int kind) {
    return findWord(reader, std::span<const WordRow<Value>>(words), kind);
}

}  // namespace quillmark
