#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "a2l/reader/block_reader.h"
#include "a2l/reader/block_rules.h"
#include "a2l/reader/word_row.h"
#include "model/ph_object.h"
#include "model/ph_value.h"

namespace quillmark {

/// A row about an optional part of a block inside an interface block.
template <typename Context>
using InterfaceRule = Rule<BlockReader, Context>;

template <typename Context>
using InterfaceRules = Rules<BlockReader, Context>;

// --- Reading parameters --------------------------------------------------------------------------

/// Reads the next token as a number; a missing number for any other token, without a message.
PhNumber readNumberIfAny(BlockReader& reader);

/// The same as a 32-bit integer: a real is truncated, anything but a number counts as 0.
std::int32_t readTruncated(BlockReader& reader);

/// The same as a value for the model.
PhHandle<PhValue> readIntegerValue(BlockReader& reader);

/// Reads a quoted text, which stays the current token; else the error "String expected" and false.
bool readText(BlockReader& reader);

/// Reads an enumerated parameter; nothing for a token that is none of the words, after the warning
/// "Unexpected token '%s' found".
template <typename Value>
std::optional<Value> readWord(BlockReader& reader, std::span<const WordRow<Value>> words) {
    const int kind = reader.next();
    const std::optional<Value> found = findWord(reader, words, kind);
    if (!found) {
        reader.unexpectedTokenWarning(kind);
    }
    return found;
}
template <typename Value, std::size_t Count>
std::optional<Value> readWord(BlockReader& reader, const WordRow<Value> (&words)[Count]) {
    return readWord(reader, std::span<const WordRow<Value>>(words));
}

/// The same where the parameter has a warning of its own, which tells the kind of the wrong token
/// as "%d".
template <typename Value, std::size_t Count>
std::optional<Value> readWord(BlockReader& reader, const WordRow<Value> (&words)[Count],
                              std::string_view warning) {
    const int kind = reader.next();
    const std::optional<Value> found = findWord(reader, words, kind);
    if (!found) {
        reader.warning(warning, {kind});
    }
    return found;
}

/// Reads an enumerated parameter into `field`, which keeps its value when the token is wrong.
template <typename Value, std::size_t Count>
void readWordInto(BlockReader& reader, const WordRow<Value> (&words)[Count], Value& field) {
    if (const std::optional<Value> found = readWord(reader, words)) {
        reader.keep(field, *found);
    }
}

// --- Reading parts: the parameters of one keyword, up to the token after them --------------------

/// An integer, stored as a value.
int storeInteger(BlockReader& reader, PhHandle<PhValue>& field);

/// A number in the kind in which it is written; for any other token a warning, and the field stays.
int storeNumber(BlockReader& reader, PhHandle<PhValue>& field);

/// An integer, stored as a property.
int storeProperty(BlockReader& reader, PhProperties& properties, std::string_view name);

/// A text, stored as a property.
int storeTextProperty(BlockReader& reader, PhProperties& properties, std::string_view name);

/// No parameter: the keyword sets a property to 1.
int setProperty(BlockReader& reader, PhProperties& properties, std::string_view name);

// --- Reading blocks ------------------------------------------------------------------------------
//
// The grammar of the protocols grows from version to version and makers add blocks of their own, so
// here a block that no rule names is skipped whole; those that nothing is kept of need no rule. A
// bare word that no rule names is an error: nobody knows where its parameters end.

/// readOptionals() for an interface block or a block inside one.
template <typename Context>
int readInterfaceOptionals(BlockReader& reader, InterfaceRules<Context> rules, Context& context,
                           int kind) {
    return readOptionals(reader, rules, context, kind, OtherBlocks::Skipped);
}

/// readParts() for a block inside an interface block. Its keyword has to be named by the current
/// table.
template <typename Context>
int readInterfaceParts(BlockReader& reader, InterfaceRules<Context> rules, Context& context,
                       int keyword, int kind) {
    return readParts(reader, rules, context, keyword, kind, OtherBlocks::Skipped);
}

/// The same where no optional parts are known (any more).
int readInterfaceEnd(BlockReader& reader, int keyword, int kind);

/// Reads one block, whose `/begin` was read last. Returns the kind of the token after it.
template <typename Context>
int readInterfaceBlock(BlockReader& reader, InterfaceRules<Context> rules, Context& context) {
    const int kind = reader.next();
    const auto* rule = findRule(reader, rules, Form::Block, kind);
    return rule != nullptr ? rule->read(reader, context) : reader.skipBlock(kind);
}

// --- Makers of rows ------------------------------------------------------------------------------

/// KEYWORD and an integer, stored as a value in a field of the context.
template <typename Context>
constexpr InterfaceRule<Context> integer(Word word, PhHandle<PhValue> Context::*field) {
    constexpr auto kStore = [](BlockReader& reader, Context& context,
                               const InterfaceRule<Context>& rule) {
        return storeInteger(reader, context.*rule.template value<PhHandle<PhValue> Context::*>());
    };
    return {Form::Bare, word, kStore, field};
}

/// The same for a number, see storeNumber().
template <typename Context>
constexpr InterfaceRule<Context> number(Word word, PhHandle<PhValue> Context::*field) {
    constexpr auto kStore = [](BlockReader& reader, Context& context,
                               const InterfaceRule<Context>& rule) {
        return storeNumber(reader, context.*rule.template value<PhHandle<PhValue> Context::*>());
    };
    return {Form::Bare, word, kStore, field};
}

/// KEYWORD, which sets a flag of the context.
template <typename Context>
constexpr InterfaceRule<Context> flag(Word word, bool Context::*field) {
    constexpr auto kSet = [](BlockReader& reader, Context& context,
                             const InterfaceRule<Context>& rule) {
        reader.keep(context.*rule.template value<bool Context::*>(), true);
        return reader.next();
    };
    return {Form::Bare, word, kSet, field};
}

/// A row about a part that is kept under a name among the properties of the context.
struct PropertyPart {
    Word word;
    Property property;

    template <typename Context>
    constexpr operator InterfaceRule<Context>() const {
        constexpr auto kStore = [](BlockReader& reader, Context& context,
                                   const InterfaceRule<Context>& rule) {
            const auto& [store, name] = rule.template value<Property>();
            return store(reader, *context.properties, name);
        };
        return {Form::Bare, word, kStore, property};
    }
};

/// KEYWORD and an integer, kept under that name.
constexpr PropertyPart property(Word word, std::string_view name) {
    return {word, {&storeProperty, name}};
}

/// KEYWORD and a text, kept under that name.
constexpr PropertyPart textProperty(Word word, std::string_view name) {
    return {word, {&storeTextProperty, name}};
}

/// KEYWORD, for which a 1 is kept under that name.
constexpr PropertyPart flagProperty(Word word, std::string_view name) {
    return {word, {&setProperty, name}};
}

/// KEYWORD and one of these words; which one is not kept.
constexpr SkippedPart judged(Word word, std::span<const WordRow<std::int32_t>> words) {
    constexpr auto kJudge = [](BlockReader& reader, int, const Skip& skip) {
        readWord(reader, skip.words);
        return reader.next();
    };
    return {Form::Bare, word, {kJudge, 1, words}};
}

/// A block of optional parts and nothing else. The table outlives the rule.
template <typename Context, std::size_t Count>
constexpr InterfaceRule<Context> blockOf(Word word, const InterfaceRule<Context> (&rules)[Count]) {
    using Table = typename InterfaceRule<Context>::Table;
    constexpr auto kRead = [](BlockReader& reader, Context& context,
                              const InterfaceRule<Context>& rule) {
        const Table& table = rule.template value<Table>();
        return readInterfaceParts(reader, {table.rules, table.count}, context, rule.keyword(),
                                  reader.next());
    };
    return {Form::Block, word, kRead, Table{rules, Count}};
}

/// A block of a known number of parameters, which are not kept, and no known parts.
constexpr SkippedPart skippedParameters(Word word, int parameters) {
    constexpr auto kDrop = [](BlockReader& reader, int keyword, const Skip& skip) {
        return readInterfaceEnd(reader, keyword, reader.drop(skip.parameters));
    };
    return {Form::Block, word, {kDrop, parameters}};
}

}  // namespace quillmark
