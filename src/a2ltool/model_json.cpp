// The parts of a module. Its protocols are in protocol_json.cpp.

#include "a2ltool/model_json.h"

#include <array>
#include <cstdint>
#include <set>
#include <string>

#include "a2ltool/utf8.h"

namespace quillmark::a2ltool {
namespace {

void writeNumberValue(JsonWriter& json, const Number& number) {
    if (number.isInteger()) {
        json.integer(number.integer());
    } else {
        json.real(number.real());
    }
}

/// Bytes as hexadecimal digits, two for each.
std::string hexadecimal(std::string_view bytes) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        text += kDigits[value >> 4U];
        text += kDigits[value & 0xFU];
    }
    return text;
}

/// The names of things that are defined elsewhere.
template <typename Item>
void writeNames(JsonWriter& json, std::string_view name, const List<Item>& items) {
    if (items.empty()) {
        return;
    }
    json.startArray(name);
    for (const Item& item : items) {
        json.text(item.name());
    }
    json.endArray();
}

template <typename Block>
void writeBlock(JsonWriter& json, const Block& block) {
    json.textMember("name", block.name());
    writeText(json, "longIdentifier", block.longIdentifier());
}

template <typename Block>
void writeBlockWithLine(JsonWriter& json, const Block& block) {
    writeBlock(json, block);
    if (block.line() > 0) {
        json.integerMember("line", block.line());
    }
}

void writeSettingValue(JsonWriter& json, const Setting& setting);

void writeMember(JsonWriter& json, const Setting& setting) {
    json.key(setting.name());
    writeSettingValue(json, setting);
}

/// What the names of some elements are good for.
enum class Names { None, Repeated, Different };

Names namesOf(const List<Setting>& elements) {
    std::set<std::string> names;
    for (const Setting& element : elements) {
        if (element.name().empty()) {
            return Names::None;
        }
        names.insert(toUtf8(element.name()));
    }
    return names.size() < elements.size() ? Names::Repeated : Names::Different;
}

/// Elements are an object, or an array where they have no names. An object has no two members of
/// one name: then each element is an object of its own.
void writeElements(JsonWriter& json, const List<Setting>& elements) {
    const Names names = elements.empty() ? Names::None : namesOf(elements);
    if (names == Names::Different) {
        json.startObject();
        for (const Setting& element : elements) {
            writeMember(json, element);
        }
        json.endObject();
        return;
    }
    json.startArray();
    for (const Setting& element : elements) {
        if (names == Names::Repeated) {
            json.startObject();
            writeMember(json, element);
            json.endObject();
        } else {
            writeSettingValue(json, element);
        }
    }
    json.endArray();
}

void writeSettingValue(JsonWriter& json, const Setting& setting) {
    switch (setting.type()) {
        case Setting::Type::Integer:
        case Setting::Type::Real:
            writeNumberValue(json, setting.number());
            return;
        case Setting::Type::Text:
            json.text(setting.text());
            return;
        case Setting::Type::List:
            writeElements(json, setting.elements());
            return;
        case Setting::Type::Bytes:
            json.text(hexadecimal(setting.bytes()));
            return;
        case Setting::Type::None:
            break;
    }
    json.null();
}

void writeRow(JsonWriter& json, const TableRow& row) {
    json.startObject();
    writeNumber(json, "lower", row.lower());
    writeNumber(json, "upper", row.upper());
    writeNumber(json, "output", row.output());
    if (const auto text = row.text()) {
        json.textMember("text", *text);
    }
    json.endObject();
}

void writeShift(JsonWriter& json, const Signal& signal) {
    if (signal.bitOperation() == BitOperation::None) {
        return;
    }
    json.startObject("shift");
    json.textMember("direction", textOf(signal.bitOperation()));
    json.integerMember("bits", signal.shiftCount());
    json.booleanMember("signExtend", signal.signExtend());
    json.endObject();
}

void writeDimensions(JsonWriter& json, const Signal& signal) {
    const std::array<std::int32_t, 3> dimensions = signal.dimensions();
    if (dimensions[0] == 0) {
        return;
    }
    json.startArray("dimensions");
    for (const std::int32_t size : dimensions) {
        if (size == 0) {
            break;
        }
        json.integer(size);
    }
    json.endArray();
}

void writeEvents(JsonWriter& json, const Signal& signal) {
    const List<EventReference> events = signal.events();
    if (events.empty()) {
        return;
    }
    json.startArray("events");
    for (const EventReference& event : events) {
        json.startObject();
        json.textMember("use", textOf(event.use));
        json.integerMember("channel", event.channel);
        json.endObject();
    }
    json.endArray();
}

}  // namespace

void writeNumber(JsonWriter& json, std::string_view name, const Number& number) {
    if (number.isPresent()) {
        json.key(name);
        writeNumberValue(json, number);
    }
}

void writeNumbers(JsonWriter& json, std::string_view name, const std::vector<Number>& numbers) {
    if (numbers.empty()) {
        return;
    }
    json.startArray(name);
    for (const Number& number : numbers) {
        writeNumberValue(json, number);
    }
    json.endArray();
}

void writeText(JsonWriter& json, std::string_view name, std::string_view text) {
    if (!text.empty()) {
        json.textMember(name, text);
    }
}

void writeSettings(JsonWriter& json, std::string_view name, const List<Setting>& settings) {
    if (settings.empty()) {
        return;
    }
    json.startObject(name);
    for (const Setting& setting : settings) {
        writeMember(json, setting);
    }
    json.endObject();
}

void writeMembers(JsonWriter& json, const Project& project) {
    writeBlockWithLine(json, project);
}

void writeMembers(JsonWriter& json, const Module& module) {
    writeBlockWithLine(json, module);
    writeText(json, "stationProtocol", textOf(module.stationProtocol()));
    if (const auto epk = module.epk()) {
        json.textMember("epk", *epk);
    }
    if (const auto address = module.epkAddress()) {
        json.integerMember("epkAddress", *address);
    }
    writeSettings(json, "settings", module.settings());
}

void writeMembers(JsonWriter& json, const MemorySegment& segment) {
    writeBlock(json, segment);
    writeText(json, "use", textOf(segment.use()));
    writeText(json, "kind", textOf(segment.kind()));
    json.integerMember("address", segment.address());
    json.integerMember("addressExtension", segment.addressExtension());
    json.integerMember("size", segment.size());
    json.integerMember("number", segment.number());
}

void writeMembers(JsonWriter& json, const Unit& unit) {
    writeBlockWithLine(json, unit);
    json.textMember("displayText", unit.displayText());
}

void writeMembers(JsonWriter& json, const Conversion& conversion) {
    writeBlockWithLine(json, conversion);
    writeText(json, "kind", textOf(conversion.kind()));
    json.booleanMember("isTable", conversion.isTable());
    if (const auto unit = conversion.unit()) {
        writeText(json, "unit", unit->displayText());
    }
    writeNumbers(json, "coefficients", conversion.coefficients());
    writeNumbers(json, "denominatorCoefficients", conversion.denominatorCoefficients());
    if (const auto table = conversion.table()) {
        json.textMember("table", table->name());
    }
    if (const List<TableRow> rows = conversion.rows(); !rows.empty()) {
        json.startArray("rows");
        for (const TableRow& row : rows) {
            writeRow(json, row);
        }
        json.endArray();
    }
    if (const auto text = conversion.defaultText()) {
        json.textMember("defaultText", *text);
    }
    writeText(json, "formula", conversion.formula());
    writeText(json, "inverseFormula", conversion.inverseFormula());
    writeText(json, "displayFormat", conversion.displayFormat());
}

void writeMembers(JsonWriter& json, const RecordLayout& layout) {
    json.textMember("name", layout.name());
    if (layout.line() > 0) {
        json.integerMember("line", layout.line());
    }
    writeText(json, "baseType", textOf(layout.baseType()));
    json.integerMember("sizeBits", layout.sizeBits());
}

void writeMembers(JsonWriter& json, const Signal& signal) {
    writeBlockWithLine(json, signal);
    writeText(json, "kind", textOf(signal.kind()));
    if (const auto address = signal.address()) {
        json.integerMember("address", *address);
    }
    if (const auto extension = signal.addressExtension()) {
        json.integerMember("addressExtension", *extension);
    }
    writeText(json, "baseType", textOf(signal.baseType()));
    json.integerMember("sizeBits", signal.sizeBits());
    writeText(json, "byteOrder", textOf(signal.byteOrder()));
    if (const auto mask = signal.bitMask()) {
        json.integerMember("bitMask", *mask);
    }
    writeShift(json, signal);
    writeDimensions(json, signal);
    writeText(json, "layout", textOf(signal.layout()));
    writeNumber(json, "lowerLimit", signal.lowerLimit());
    writeNumber(json, "upperLimit", signal.upperLimit());
    writeText(json, "displayFormat", signal.displayFormat());
    if (const auto conversion = signal.conversion()) {
        json.textMember("conversion", conversion->name());
    }
    writeText(json, "unit", signal.unitText());
    if (const auto layout = signal.recordLayout()) {
        json.textMember("recordLayout", layout->name());
    }
    writeNames(json, "virtualMembers", signal.virtualMembers());
    writeEvents(json, signal);
}

void writeMembers(JsonWriter& json, const Group& group) {
    writeBlockWithLine(json, group);
    writeNames(json, "signals", group.signals());
    writeNames(json, "groups", group.groups());
}

void writeMembers(JsonWriter& json, const Frame& frame) {
    writeBlockWithLine(json, frame);
    json.integerMember("scalingUnit", frame.scalingUnit());
    json.integerMember("rate", frame.rate());
    writeNames(json, "signals", frame.signals());
}

}  // namespace quillmark::a2ltool
