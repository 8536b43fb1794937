#include "a2l/interfaces/interface_parts.h"

namespace quillmark {

PhNumber readNumberIfAny(BlockReader& reader) {
    return reader.number(reader.next());
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

int storeInteger(BlockReader& reader, PhHandle<PhValue>& field) {
    reader.keep(field, readIntegerValue(reader));
    return reader.next();
}

int storeNumber(BlockReader& reader, PhHandle<PhValue>& field) {
    const PhNumber number = reader.readNumberValue();
    if (number.isPresent()) {
        reader.keep(field, PhValue::ofNumber(number));
    }
    return reader.next();
}

int storeProperty(BlockReader& reader, PhProperties& properties, std::string_view name) {
    reader.keepInteger(properties, name, readTruncated(reader));
    return reader.next();
}

int storeTextProperty(BlockReader& reader, PhProperties& properties, std::string_view name) {
    if (readText(reader)) {
        reader.keepText(properties, name, reader.token().text);
    }
    return reader.next();
}

int setProperty(BlockReader& reader, PhProperties& properties, std::string_view name) {
    reader.keepInteger(properties, name, 1);
    return reader.next();
}

int readInterfaceEnd(BlockReader& reader, int keyword, int kind) {
    struct Nothing {
    } nothing;
    return readInterfaceParts(reader, {}, nothing, keyword, kind);
}

}  // namespace quillmark
