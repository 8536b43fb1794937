#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "a2l/reader/block_reader.h"
#include "a2l/tokens/keyword_tables.h"
#include "a2l/tokens/lexer.h"
#include "model/ph_object.h"
#include "model/ph_value.h"

namespace quillmark {

/// One optional part of a block inside an interface block, see OptionalRule. The grammar of the
/// protocols grows from version to version and makers add blocks of their own, so here a block that
/// no rule names is skipped whole. A bare word that no rule names is an error: nobody knows where
/// its parameters end.
template <typename Context>
struct InterfaceRule {
    /// Parses the part and returns the kind of the token after it.
    using Parse = int (*)(BlockReader&, Context&);

    static constexpr bool kSkipsUnknownBlocks = true;

    Form form;
    int keyword;  ///< TOK_IDENT for a word that the protocol's keyword table lacks
    Parse parse = nullptr;
    int dropped = 0;             ///< as in OptionalRule
    std::string_view text = {};  ///< of such a word

    bool matches(Form foundForm, int kind, const Token& token) const {
        return keyword == kind && form == foundForm && (kind != TOK_IDENT || text == token.text);
    }
};

/// One word that an enumerated parameter takes, and the code that the model keeps for it.
struct InterfaceWord {
    int keyword;  ///< TOK_IDENT for a word that the protocol's keyword table lacks
    std::int32_t code;
    std::string_view text = {};  ///< of such a word
};

/// Traces what block is read when the reader is verbose.
void traceBlock(BlockReader& reader, std::string_view text);

/// The last token, which is of kind `kind`, as a number; a missing number for any other token.
PhNumber numberOf(const BlockReader& reader, int kind);

/// Reads the next token as a number; a missing number for any other token, without a message.
PhNumber readNumberIfAny(BlockReader& reader);

/// The same as a 32-bit integer: a real is truncated, anything but a number counts as 0.
std::int32_t readTruncated(BlockReader& reader);

/// The same as a value for the model.
PhHandle<PhValue> readIntegerValue(BlockReader& reader);

/// Reads a quoted text, which stays the current token; else the error "String expected" and false.
bool readText(BlockReader& reader);

/// The code of the last token, which is of kind `kind`; nothing when it is none of the words.
std::optional<std::int32_t> findWord(const BlockReader& reader,
                                     std::span<const InterfaceWord> words, int kind);

/// Reads an enumerated parameter; nothing for a token that is none of the words, after the warning
/// "Unexpected token '%s' found".
std::optional<std::int32_t> readWord(BlockReader& reader, std::span<const InterfaceWord> words);

/// The same where the parameter has a warning of its own, which tells the kind of the wrong token
/// as "%d".
std::optional<std::int32_t> readWord(BlockReader& reader, std::span<const InterfaceWord> words,
                                     std::string_view warning);

/// Reads an enumerated parameter into `field`, which keeps its value when the token is wrong.
void readWordInto(BlockReader& reader, std::span<const InterfaceWord> words, std::int32_t& field);

/// Reads the optional parts of a block up to its `/end`, and its end. `kind` is the kind of the
/// first token. The block's keyword has to be named by the current table.
template <typename Rules, typename Context>
int readInterfaceParts(BlockReader& reader, const Rules& rules, Context& context, int keyword,
                       int kind) {
    kind = readOptionals(reader, rules, context, kind);
    return kind == kw::core::END ? reader.closeBlock(keyword) : kind;
}

/// The rules of a block that has no optional parts.
template <typename Context>
inline constexpr std::array<InterfaceRule<Context>, 0> kNoInterfaceRules{};

/// Reads one block, whose `/begin` was read last. Returns the kind of the token after it.
template <typename Rules, typename Context>
int readInterfaceBlock(BlockReader& reader, const Rules& rules, Context& context) {
    const int kind = reader.next();
    const auto* rule = findRule(rules, Form::Block, kind, reader.token());
    return rule != nullptr ? applyRule(reader, *rule, context, kind) : reader.skipBlock(kind);
}

// --- What rules name: each reads the parameters of one keyword -----------------------------------

/// An integer, stored as a value in a field of the context.
template <auto Field, typename Context>
int storeInteger(BlockReader& reader, Context& context) {
    reader.keep(context.*Field, readIntegerValue(reader));
    return reader.next();
}

/// A number in the kind in which it is written; for any other token a warning, and the field stays.
template <auto Field, typename Context>
int storeNumber(BlockReader& reader, Context& context) {
    const PhNumber number = reader.readNumberValue();
    if (number.isPresent()) {
        reader.keep(context.*Field, PhValue::ofNumber(number));
    }
    return reader.next();
}

/// One of these words; which one is not kept.
template <const auto& Words, typename Context>
int judgeWord(BlockReader& reader, Context&) {
    readWord(reader, Words);
    return reader.next();
}

/// No parameter: the keyword sets a flag.
template <auto Field, typename Context>
int setFlag(BlockReader& reader, Context& context) {
    reader.keep(context.*Field, true);
    return reader.next();
}

/// An integer, stored as a property of the context.
template <const std::string_view& Key, typename Context>
int storeProperty(BlockReader& reader, Context& context) {
    reader.keepInteger(*context.properties, Key, readTruncated(reader));
    return reader.next();
}

/// No parameter: the keyword sets a property to 1.
template <const std::string_view& Key, typename Context>
int setProperty(BlockReader& reader, Context& context) {
    reader.keepInteger(*context.properties, Key, 1);
    return reader.next();
}

/// A text, stored as a property of the context.
template <const std::string_view& Key, typename Context>
int storeTextProperty(BlockReader& reader, Context& context) {
    if (readText(reader)) {
        reader.keepText(*context.properties, Key, reader.token().text);
    }
    return reader.next();
}

}  // namespace quillmark
