#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <type_traits>
#include <variant>

#include "a2l/reader/block_reader.h"
#include "a2l/reader/word_row.h"
#include "a2l/tokens/keyword_tables.h"
#include "model/ph_object.h"
#include "model/ph_value.h"

namespace quillmark {

// The optional parts of a block are rows of a table. A row reads like a sentence:
//
//     static constexpr CoreRule<PhGroup> kRules[] = {
//         bare(VERSION, parseVersion),          VERSION and what parseVersion reads
//         skipped(SYSTEM_CONSTANT, 2),          SYSTEM_CONSTANT and two parameters, not kept
//         block(MEMORY_SEGMENT, parseSegment),  /begin MEMORY_SEGMENT and what parseSegment reads
//         skippedBlock(MEMORY_LAYOUT),          up to /end MEMORY_LAYOUT, unjudged
//     };
//
// The makers of rows stand behind Rule, those for parts that only interface blocks have in
// interface_parts.h. Most rows name a function; where several parts differ in one value only, the
// function gets the rule, which knows the value.

/// How an optional part of a block stands in the text.
enum class Form : std::uint8_t {
    Bare,   ///< KEYWORD and its parameters
    Block,  ///< /begin KEYWORD ... /end KEYWORD
};

/// A way to read over a part that nothing is kept of.
struct Skip {
    /// Is called after the keyword; returns the kind of the token after the part.
    int (*read)(BlockReader& reader, int keyword, const Skip& skip);
    int parameters = 0;                                 ///< where the part has a known number
    std::span<const WordRow<std::int32_t>> words = {};  ///< where a parameter is one of some words
};

/// A row about a part that nothing is kept of. It suits the tables of all blocks.
struct SkippedPart {
    Form form;
    Word word;
    Skip skip;
};

/// A way to keep a part among properties, and under which name.
struct Property {
    int (*store)(BlockReader& reader, PhProperties& properties, std::string_view name);
    std::string_view name;
};

/// One optional part of a block: how it begins, and what reads it. `Reader` is what the parsers of
/// the block are given, a BlockReader or more; `Context` is what the block fills.
template <typename Reader, typename Context>
class Rule {
  public:
    /// Reads a part, whose keyword was read last, and returns the kind of the token after it.
    using Parse = int (*)(Reader&, Context&);

    /// The same for parts that differ in one value only, which stands in their rules.
    using ParseByRule = int (*)(Reader&, Context&, const Rule&);

    /// A table of rules.
    struct Table {
        const Rule* rules;
        std::size_t count;
    };

    /// What a rule knows about its part: what reads it, and what that is to know.
    using Value = std::variant<Parse, Skip, int, std::string_view, Table, Property, bool Context::*,
                               PhHandle<PhValue> Context::*>;

    constexpr Rule(Form form, const Word& word, ParseByRule parse, Value value)
        : word_(word), form_(form), parse_(parse), value_(value) {}

    constexpr Rule(Form form, const Word& word, Parse parse)
        : Rule(form, word, &call, Value(parse)) {}

    constexpr Rule(const SkippedPart& part)
        : Rule(part.form, part.word, &readOver, Value(part.skip)) {}

    constexpr Form form() const { return form_; }

    /// The keyword of the part.
    constexpr int keyword() const { return word_.kind(); }

    /// The value of that type.
    template <typename T>
    constexpr const T& value() const {
        return std::get<T>(value_);
    }

    /// Whether a part of that form begins with the last token, which is of kind `kind`.
    bool matches(const Reader& reader, Form form, int kind) const {
        return word_.isLast(reader, kind) && form_ == form;
    }

    /// Reads the part, see Parse.
    int read(Reader& reader, Context& context) const { return parse_(reader, context, *this); }

  private:
    static int call(Reader& reader, Context& context, const Rule& rule) {
        return rule.value<Parse>()(reader, context);
    }
    static int readOver(Reader& reader, Context&, const Rule& rule) {
        const Skip& skip = rule.value<Skip>();
        return skip.read(reader, rule.keyword(), skip);
    }

    Word word_;
    Form form_;
    ParseByRule parse_;
    Value value_;
};

/// A table of rules as functions take it.
template <typename Reader, typename Context>
using Rules = std::type_identity_t<std::span<const Rule<Reader, Context>>>;

// --- Makers of rows ------------------------------------------------------------------------------

/// KEYWORD and what `parse` reads.
template <typename Reader, typename Context>
constexpr Rule<Reader, Context> bare(Word word, int (*parse)(Reader&, Context&)) {
    return {Form::Bare, word, parse};
}

/// The same, where `parse` asks its rule for the value.
template <typename Reader, typename Context>
constexpr Rule<Reader, Context> bare(Word word,
                                     int (*parse)(Reader&, Context&, const Rule<Reader, Context>&),
                                     typename Rule<Reader, Context>::Value value) {
    return {Form::Bare, word, parse, value};
}

/// /begin KEYWORD and what `parse` reads, which includes /end KEYWORD.
template <typename Reader, typename Context>
constexpr Rule<Reader, Context> block(Word word, int (*parse)(Reader&, Context&)) {
    return {Form::Block, word, parse};
}

/// The same, where `parse` asks its rule for the keyword or for the value.
template <typename Reader, typename Context>
constexpr Rule<Reader, Context> block(Word word,
                                      int (*parse)(Reader&, Context&, const Rule<Reader, Context>&),
                                      typename Rule<Reader, Context>::Value value = {}) {
    return {Form::Block, word, parse, value};
}

/// KEYWORD and a number of parameters of any kind.
constexpr SkippedPart skipped(Word word, int parameters) {
    constexpr auto kDrop = [](BlockReader& reader, int, const Skip& skip) {
        return reader.drop(skip.parameters);
    };
    return {Form::Bare, word, {kDrop, parameters}};
}

/// KEYWORD and one parameter that may be a word in the sense of the lexer's word mode.
constexpr SkippedPart skippedWord(Word word) {
    constexpr auto kDrop = [](BlockReader& reader, int, const Skip&) {
        reader.nextWord();
        return reader.next();
    };
    return {Form::Bare, word, {kDrop}};
}

/// KEYWORD and any number of numbers.
constexpr SkippedPart skippedNumbers(Word word) {
    constexpr auto kDrop = [](BlockReader& reader, int, const Skip&) {
        int kind = reader.next();
        while (kind == TOK_INTEGER || kind == TOK_FLOAT) {
            kind = reader.next();
        }
        return kind;
    };
    return {Form::Bare, word, {kDrop}};
}

/// KEYWORD and any number of names.
constexpr SkippedPart skippedNames(Word word) {
    constexpr auto kDrop = [](BlockReader& reader, int, const Skip&) {
        return reader.readNames([](std::string_view) {});
    };
    return {Form::Bare, word, {kDrop}};
}

/// A block of any number of names and nothing else.
constexpr SkippedPart skippedNameBlock(Word word) {
    constexpr auto kDrop = [](BlockReader& reader, int keyword, const Skip&) {
        return reader.readNameBlock(keyword, [](std::string_view) {});
    };
    return {Form::Block, word, {kDrop}};
}

/// A block of any content, see BlockReader::skipBlock().
constexpr SkippedPart skippedBlock(Word word) {
    constexpr auto kSkip = [](BlockReader& reader, int keyword, const Skip&) {
        return reader.skipBlock(keyword);
    };
    return {Form::Block, word, {kSkip}};
}

// --- Reading by rules ----------------------------------------------------------------------------

/// What becomes of a block that no rule names.
enum class OtherBlocks : std::uint8_t {
    Wrong,    ///< it is an unexpected token
    Skipped,  ///< it is skipped whole
};

/// The rule for a part of that form whose first token, read last, is of kind `kind`; or nullptr.
template <typename Reader, typename Context>
const Rule<Reader, Context>* findRule(const Reader& reader,
                                      std::span<const Rule<Reader, Context>> rules, Form form,
                                      int kind) {
    for (const Rule<Reader, Context>& rule : rules) {
        if (rule.matches(reader, form, kind)) {
            return &rule;
        }
    }
    return nullptr;
}

/// Whether a table names any block.
template <typename Reader, typename Context>
bool hasBlocks(std::span<const Rule<Reader, Context>> rules) {
    return std::any_of(rules.begin(), rules.end(),
                       [](const auto& rule) { return rule.form() == Form::Block; });
}

/// Reads optional parts, the first of whose tokens is `kind`, up to `/end`. Returns the kind of
/// that token, or TOK_ERROR after something that no rule names.
template <typename Reader, typename Context>
int readOptionals(Reader& reader, Rules<Reader, Context> rules, Context& context, int kind,
                  OtherBlocks others) {
    while (kind != kw::core::END) {
        Form form = Form::Bare;
        if (kind == kw::core::BEGIN && (others == OtherBlocks::Skipped || hasBlocks(rules))) {
            form = Form::Block;
            kind = reader.next();
        }
        if (const auto* rule = findRule(reader, rules, form, kind)) {
            kind = rule->read(reader, context);
        } else if (form == Form::Block && others == OtherBlocks::Skipped) {
            kind = reader.skipBlock(kind);
        } else {
            return reader.unexpectedToken(kind);
        }
    }
    return kind;
}

/// Reads the rest of the block `keyword`: its optional parts, the first of whose tokens is `kind`,
/// and its end. Returns the kind of the token after it.
template <typename Reader, typename Context>
int readParts(Reader& reader, Rules<Reader, Context> rules, Context& context, int keyword, int kind,
              OtherBlocks others = OtherBlocks::Wrong) {
    kind = readOptionals(reader, rules, context, kind, others);
    return kind == kw::core::END ? reader.closeBlock(keyword) : kind;
}

/// Reads bare optional parts, the first of whose tokens is `kind`, up to the first token that no
/// rule names, whose kind is returned.
template <typename Reader, typename Context>
int readBareOptionals(Reader& reader, Rules<Reader, Context> rules, Context& context, int kind) {
    while (const auto* rule = findRule(reader, rules, Form::Bare, kind)) {
        kind = rule->read(reader, context);
    }
    return kind;
}

}  // namespace quillmark
