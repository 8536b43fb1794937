#include "a2l/interfaces/interface_parts.h"

namespace quillmark {

void traceBlock(BlockReader& reader, std::string_view text) {
    if (reader.verbose()) {
        reader.trace(text);
    }
}

PhNumber numberOf(const BlockReader& reader, int kind) {
    switch (kind) {
        case TOK_INTEGER:
            return PhNumber::integer(reader.token().intValue);
        case TOK_FLOAT:
            return PhNumber::real(reader.token().floatValue);
        default:
            return {};
    }
}

PhNumber readNumberIfAny(BlockReader& reader) {
    return numberOf(reader, reader.next());
}

std::int32_t readTruncated(BlockReader& reader) {
    return readNumberIfAny(reader).toInteger();
}

PhHandle<PhValue> readIntegerValue(BlockReader& reader) {
    return PhValue::ofInteger(readTruncated(reader));
}

bool readText(BlockReader& reader) {
    if (reader.next() == TOK_STRING) {
        return true;
    }
    reader.fail("String expected");
    return false;
}

std::optional<std::int32_t> findWord(const BlockReader& reader,
                                     std::span<const InterfaceWord> words, int kind) {
    for (const InterfaceWord& word : words) {
        if (word.keyword == kind && (kind != TOK_IDENT || word.text == reader.token().text)) {
            return word.code;
        }
    }
    return std::nullopt;
}

std::optional<std::int32_t> readWord(BlockReader& reader, std::span<const InterfaceWord> words) {
    const int kind = reader.next();
    const std::optional<std::int32_t> code = findWord(reader, words, kind);
    if (!code) {
        reader.unexpectedTokenWarning(kind);
    }
    return code;
}

std::optional<std::int32_t> readWord(BlockReader& reader, std::span<const InterfaceWord> words,
                                     std::string_view warning) {
    const int kind = reader.next();
    const std::optional<std::int32_t> code = findWord(reader, words, kind);
    if (!code) {
        reader.warning(warning, {kind});
    }
    return code;
}

void readWordInto(BlockReader& reader, std::span<const InterfaceWord> words, std::int32_t& field) {
    if (const std::optional<std::int32_t> code = readWord(reader, words)) {
        reader.keep(field, *code);
    }
}

}  // namespace quillmark
