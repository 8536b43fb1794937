#include "support/dump.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "model/module_model.h"

namespace quillmark {

namespace {

constexpr std::array<std::string_view, 10> kSignalKinds{
    "Undefined", "Measurement", "Value", "Curve", "Map",
    "Cuboid",    "ValueBlock",  "Ascii", "Cube4", "Cube5"};
constexpr std::array<std::string_view, 3> kBitOperations{"None", "LeftShift", "RightShift"};
constexpr std::array<std::string_view, 3> kLayouts{"None", "RowDirection", "ColumnDirection"};

bool isBareNameByte(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           std::string_view("_.:[]()/%*+|-").find(c) != std::string_view::npos;
}

bool isBareName(std::string_view name) {
    return !name.empty() && std::all_of(name.begin(), name.end(), isBareNameByte);
}

void appendInteger(std::string& out, std::int64_t value, int base = 10) {
    std::array<char, 24> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value, base);
    out.append(digits.data(), end.ptr);
}

void appendReal(std::string& out, double value) {
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    const std::string_view text(digits.data(), static_cast<std::size_t>(end.ptr - digits.data()));
    out += text;
    if (text.find_first_not_of("-0123456789") == std::string_view::npos) {
        out += ".0";  // keeps a whole real apart from an integer
    }
}

void appendNumber(std::string& out, const PhNumber& number) {
    switch (number.kind()) {
        case PhNumber::Kind::None:
            out += "none";
            break;
        case PhNumber::Kind::Integer:
            appendInteger(out, number.exactInteger());
            break;
        case PhNumber::Kind::Real:
            appendReal(out, number.toReal());
            break;
    }
}

void appendHexByte(std::string& out, unsigned char byte) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    out += kDigits[byte >> 4U];
    out += kDigits[byte & 15U];
}

void appendQuotedByte(std::string& out, char c) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
        out += '\\';
        out += c;
    } else if (c == '\n') {
        out += "\\n";
    } else if (byte < 0x20 || byte > 0x7E) {
        out += "\\x";
        appendHexByte(out, byte);
    } else {
        out += c;
    }
}

void appendQuoted(std::string& out, std::string_view text) {
    out += '"';
    for (const char c : text) {
        appendQuotedByte(out, c);
    }
    out += '"';
}

void appendName(std::string& out, const PhObject& object) {
    if (isBareName(object.name().view())) {
        out += object.name().view();
    } else {
        appendQuoted(out, object.name().view());
    }
    if (object.isUnresolved()) {
        out += '!';
    } else if (object.isPlaceholder()) {
        out += '?';
    }
}

void appendValue(std::string& out, const PhValue& value) {
    switch (value.type()) {
        case PhValue::Type::None:
        case PhValue::Type::Integer:
        case PhValue::Type::Real:
            appendNumber(out, value.number());
            break;
        case PhValue::Type::Text:
            appendQuoted(out, value.text().view());
            break;
        case PhValue::Type::List:
            out += "list";
            break;
        case PhValue::Type::Bytes:
            out += "bytes:";
            for (const unsigned char byte : value.bytes()) {
                appendHexByte(out, byte);
            }
            break;
    }
}

/// Puts lines together: a line is begun, takes its fields, and is ended.
class Writer {
  public:
    const std::string& text() const { return text_; }

    /// Lines are one level deeper for as long as this lives.
    class Nesting {
      public:
        explicit Nesting(Writer& writer) : writer_(writer) { ++writer_.level_; }
        Nesting(const Nesting&) = delete;
        Nesting& operator=(const Nesting&) = delete;
        ~Nesting() { --writer_.level_; }

      private:
        Writer& writer_;
    };

    void begin(std::string_view kind) {
        text_.append(2 * level_, ' ');
        text_ += kind;
    }

    void begin(std::string_view kind, const PhObject& object) {
        begin(kind);
        if (!object.name().isNull() || object.isPlaceholder() || object.isUnresolved()) {
            text_ += ' ';
            appendName(text_, object);
        }
        textField("longIdentifier", object.longIdentifier());
    }

    void end() { text_ += '\n'; }

    void integerField(std::string_view key, std::int64_t value) {
        if (value != 0) {
            beginField(key);
            appendInteger(text_, value);
        }
    }

    void hexField(std::string_view key, std::uint32_t value) {
        beginField(key);
        text_ += "0x";
        appendInteger(text_, value, 16);
    }

    void flagField(std::string_view key, bool value) {
        if (value) {
            beginField(key);
            text_ += "true";
        }
    }

    void numberField(std::string_view key, const PhNumber& number) {
        if (number.isPresent()) {
            beginField(key);
            appendNumber(text_, number);
        }
    }

    void textField(std::string_view key, const PhString& text) {
        if (!text.isNull()) {
            beginField(key);
            appendQuoted(text_, text.view());
        }
    }

    void valueField(std::string_view key, const PhHandle<PhValue>& value) {
        if (value) {
            beginField(key);
            appendValue(text_, *value);
        }
    }

    /// A code of an enumeration, left out when it is 0.
    template <typename Code>
    void codeField(std::string_view key, PhEnumeration enumeration, Code code) {
        const auto number = static_cast<std::int32_t>(code);
        const std::string_view text = enumerationText(enumeration, number);
        if (text == "*Undefined*") {
            integerField(key, number);
        } else if (number != 0) {
            beginField(key);
            text_ += text;
        }
    }

    /// The same for enumerations whose texts only this file knows.
    template <typename Code>
    void codeField(std::string_view key, std::span<const std::string_view> texts, Code code) {
        const auto number = static_cast<std::size_t>(code);
        if (number >= texts.size()) {
            integerField(key, static_cast<std::int64_t>(number));
        } else if (number != 0) {
            beginField(key);
            text_ += texts[number];
        }
    }

    void referenceField(std::string_view key, const PhObject* object) {
        if (object != nullptr) {
            beginField(key);
            appendName(text_, *object);
        }
    }

    void dimensionsField(std::string_view key, const std::array<std::int32_t, 3>& sizes) {
        if (sizes == std::array<std::int32_t, 3>{}) {
            return;
        }
        beginField(key);
        for (std::size_t i = 0; i < sizes.size(); ++i) {
            text_ += i == 0 ? "" : ",";
            appendInteger(text_, sizes[i]);
        }
    }

    /// A line of many, each written by `appendItem(text, item)`; none when there are none.
    template <typename Items, typename AppendItem>
    void listLine(std::string_view kind, const Items& items, AppendItem appendItem) {
        if (items.begin() == items.end()) {
            return;
        }
        begin(kind);
        for (const auto& item : items) {
            text_ += ' ';
            appendItem(text_, item);
        }
        end();
    }

    /// A property: the value's name, if it has one, and its content.
    void valueLine(const PhValue& value) {
        if (value.type() == PhValue::Type::List) {
            begin("list", value);
        } else {
            begin("value");
            text_ += ' ';
            if (!value.name().isNull()) {
                appendName(text_, value);
                text_ += '=';
            }
            appendValue(text_, value);
            textField("longIdentifier", value.longIdentifier());
        }
        end();
    }

  private:
    void beginField(std::string_view key) {
        text_ += ' ';
        text_ += key;
        text_ += '=';
    }

    std::string text_;
    std::size_t level_ = 0;
};

void dumpReferences(Writer& out, std::string_view kind, const auto& objects) {
    out.listLine(kind, objects, appendName);
}

void dumpNumbers(Writer& out, std::string_view kind, const std::vector<PhNumber>& numbers) {
    out.listLine(kind, numbers, appendNumber);
}

void dumpEvents(Writer& out, std::string_view kind, const std::vector<PhSignalEvent>& events,
                PhSignalEvent::Use use) {
    std::vector<std::int32_t> channels;
    for (const PhSignalEvent& event : events) {
        if (event.use == use) {
            channels.push_back(event.channel);
        }
    }
    out.listLine(kind, channels,
                 [](std::string& text, std::int32_t channel) { appendInteger(text, channel); });
}

/// Lists nest no deeper than the readers make them: a bag, its lists, their elements.
void dumpValues(Writer& out, const PhValue::List& values) {
    const Writer::Nesting nesting(out);
    for (const PhHandle<PhValue>& value : values) {
        out.valueLine(*value);
        if (const PhValue::List* elements = value->listIfAny()) {
            dumpValues(out, *elements);
        }
    }
}

void dumpProperties(Writer& out, const PhHandle<PhProperties>& properties) {
    if (properties && !properties->values().empty()) {
        out.begin("properties", *properties);
        out.end();
        dumpValues(out, properties->values());
    }
}

bool tellsAnything(const PhTypeData& type) {
    return type.baseType != PhBaseType::Undefined || type.sizeBits != 0 || type.bitMask ||
           type.unit || type.conversion;
}

void dumpTypeFields(Writer& out, const PhTypeData& type) {
    out.codeField("baseType", PhEnumeration::BaseType, type.baseType);
    out.integerField("sizeBits", type.sizeBits);
    if (type.bitMask) {
        out.hexField("bitMask", static_cast<std::uint32_t>(*type.bitMask));
    }
    out.referenceField("unit", type.unit.get());
    out.referenceField("conversion", type.conversion.get());
    out.end();
}

void dumpTableEntry(Writer& out, const PhTableEntry& entry) {
    out.begin("tableEntry");
    out.numberField("lower", entry.lower());
    out.numberField("upper", entry.upper());
    out.numberField("output", entry.output());
    out.textField("text", entry.text());
    out.end();
}

void dumpConversion(Writer& out, const PhConversion& conversion) {
    out.begin("conversion", conversion);
    out.codeField("conversionType", PhEnumeration::ConversionType, conversion.conversionType);
    out.referenceField("unit", conversion.unit.get());
    out.referenceField("tableRef", conversion.tableRef.get());
    out.textField("defaultText", conversion.defaultText);
    if (const PhConversion::Texts* const texts = conversion.textsIfAny()) {
        out.textField("displayFormat", texts->displayFormat);
        out.textField("formula", texts->formula);
        out.textField("inverseFormula", texts->inverseFormula);
    }
    out.end();
    const Writer::Nesting nesting(out);
    dumpNumbers(out, "coeffs", conversion.coeffs);
    dumpNumbers(out, "denominatorCoeffs", conversion.denominatorCoeffs);
    for (const PhTableEntry& entry : conversion.tableEntries) {
        dumpTableEntry(out, entry);
    }
}

void dumpUnit(Writer& out, const PhUnit& unit) {
    out.begin("unit", unit);
    out.textField("displayText", unit.displayText());
    out.end();
}

void dumpRecordLayout(Writer& out, const PhRecordLayout& layout) {
    out.begin("recordLayout", layout);
    out.end();
    const Writer::Nesting nesting(out);
    if (layout.dataType) {
        out.begin("dataType", *layout.dataType);
        dumpTypeFields(out, *layout.dataType);
    }
}

void dumpSignalFields(Writer& out, const PhEntity& signal) {
    out.codeField("signalKind", kSignalKinds, signal.signalKind);
    out.codeField("byteOrder", PhEnumeration::ByteOrder, signal.byteOrder);
    out.codeField("bitOperation", kBitOperations, signal.bitOperation);
    out.codeField("layout", kLayouts, signal.layout);
    out.flagField("signExtend", signal.signExtend);
    if (signal.address) {
        out.hexField("address", static_cast<std::uint32_t>(*signal.address));
    }
    if (signal.addressExtension) {
        out.hexField("addressExtension", static_cast<std::uint32_t>(*signal.addressExtension));
    }
    out.numberField("lowerLimit", signal.lowerLimit());
    out.numberField("upperLimit", signal.upperLimit());
    out.textField("displayFormat", signal.displayFormat());
    out.referenceField("recordLayout", signal.recordLayout.get());
    out.dimensionsField("matrixDims", signal.matrixDims());
    out.integerField("shiftCount", signal.shiftCount());
}

void dumpSignal(Writer& out, const PhEntity& signal) {
    out.begin("signal", signal);
    dumpSignalFields(out, signal);
    out.end();
    const Writer::Nesting nesting(out);
    if (tellsAnything(signal.datatype)) {
        out.begin("datatype");
        dumpTypeFields(out, signal.datatype);
    }
    if (const PhEntity::Extras* extras = signal.extrasIfAny()) {
        dumpReferences(out, "virtualMembers", extras->virtualMembers);
        dumpEvents(out, "fixedEvents", extras->events, PhSignalEvent::Use::Fixed);
        dumpEvents(out, "availableEvents", extras->events, PhSignalEvent::Use::Available);
        dumpEvents(out, "defaultEvents", extras->events, PhSignalEvent::Use::Default);
        dumpEvents(out, "consistencyEvents", extras->events, PhSignalEvent::Use::Consistency);
    }
}

void dumpFunction(Writer& out, const PhFunction& function) {
    out.begin("function", function);
    out.end();
    const Writer::Nesting nesting(out);
    dumpReferences(out, "signals", function.signals);
    dumpReferences(out, "functions", function.functions);
}

void dumpFrame(Writer& out, const PhFrame& frame) {
    out.begin("frame", frame);
    out.integerField("scalingUnit", frame.scalingUnit);
    out.integerField("rate", frame.rate);
    out.end();
    const Writer::Nesting nesting(out);
    dumpReferences(out, "signals", frame.signals);
}

void dumpProtocolParam(Writer& out, const PhProtocolParam& param) {
    out.begin("protocolParam", param);
    out.codeField("encoding", PhEnumeration::ByteOrder, param.encoding);
    out.end();
    const Writer::Nesting nesting(out);
    dumpProperties(out, param.properties);
}

void dumpDaqTpCapabilities(Writer& out, const PhDaqTpCapabilities& capabilities) {
    out.begin("daqTpCapabilities", capabilities);
    out.end();
    const Writer::Nesting nesting(out);
    for (const PhDaqTpCan& entry : capabilities.daqLists) {
        out.begin("daqTpCan", entry);
        out.valueField("number", entry.number);
        out.valueField("canId", entry.canId);
        out.end();
    }
}

void dumpTimebase(Writer& out, std::string_view field, const PhHandle<PhTimebase>& timebase) {
    if (!timebase) {
        return;
    }
    out.begin(field, *timebase);
    out.integerField("resolution", timebase->resolution);
    out.integerField("scale", timebase->scale);
    out.valueField("byteLength", timebase->byteLength);
    out.flagField("fixed", timebase->fixed);
    out.end();
}

void dumpPackedMode(Writer& out, const PhHandle<PhDaqPackedMode>& mode) {
    if (!mode) {
        return;
    }
    out.begin("packedMode", *mode);
    out.integerField("grouping", mode->grouping);
    out.integerField("timestamp", mode->timestamp);
    out.integerField("mandatory", mode->mandatory);
    out.valueField("sampleCount", mode->sampleCount);
    out.end();
    const Writer::Nesting nesting(out);
    out.listLine("alternativeSampleCounts", mode->alternativeSampleCounts, appendValue);
}

void dumpRaster(Writer& out, const PhRaster& raster) {
    out.begin("raster", raster);
    out.textField("shortName", raster.shortName);
    out.valueField("channel", raster.channel);
    out.flagField("cyclic", raster.cyclic);
    out.flagField("daqSupported", raster.daqSupported);
    out.flagField("stimSupported", raster.stimSupported);
    out.valueField("priority", raster.priority);
    out.end();
    const Writer::Nesting nesting(out);
    dumpTimebase(out, "timebase", raster.timebase);
    dumpTimebase(out, "minCycleTime", raster.minCycleTime);
    dumpPackedMode(out, raster.packedMode);
    dumpProperties(out, raster.properties);
}

void dumpOdt(Writer& out, const PhOdt& odt) {
    out.begin("odt", odt);
    out.valueField("number", odt.number);
    out.end();
    const Writer::Nesting nesting(out);
    for (const PhOdtEntry& entry : odt.entries) {
        out.begin("odtEntry", entry);
        out.valueField("number", entry.number);
        out.valueField("address", entry.address);
        out.valueField("addressExtension", entry.addressExtension);
        out.valueField("size", entry.size);
        out.valueField("bitOffset", entry.bitOffset);
        out.end();
    }
}

void dumpDaq(Writer& out, const PhDaq& daq) {
    out.begin("daq", daq);
    out.integerField("direction", daq.direction);
    out.valueField("number", daq.number);
    out.valueField("length", daq.length);
    out.valueField("maxOdtEntries", daq.maxOdtEntries);
    out.valueField("sourceId", daq.sourceId);
    out.valueField("firstPid", daq.firstPid);
    out.end();
    const Writer::Nesting nesting(out);
    for (const PhOdt& odt : daq.odts) {
        dumpOdt(out, odt);
    }
}

void dumpDaqCapabilities(Writer& out, const PhDaqCapabilities& capabilities) {
    out.begin("daqCapabilities", capabilities);
    out.integerField("configType", capabilities.configType);
    out.integerField("optimisationType", capabilities.optimisationType);
    out.integerField("addressExtension", capabilities.addressExtension);
    out.integerField("identificationFieldType", capabilities.identificationFieldType);
    out.integerField("granularityOdtEntrySize", capabilities.granularityOdtEntrySize);
    out.integerField("overloadIndication", capabilities.overloadIndication);
    out.valueField("maxDaq", capabilities.maxDaq);
    out.valueField("maxEventChannel", capabilities.maxEventChannel);
    out.valueField("minDaq", capabilities.minDaq);
    out.valueField("maxOdtEntrySize", capabilities.maxOdtEntrySize);
    out.flagField("prescalerSupported", capabilities.prescalerSupported);
    out.flagField("resumeSupported", capabilities.resumeSupported);
    out.flagField("pidOffSupported", capabilities.pidOffSupported);
    out.flagField("storeDaqSupported", capabilities.storeDaqSupported);
    out.end();
    const Writer::Nesting nesting(out);
    dumpTimebase(out, "timebase", capabilities.timebase);
    dumpProperties(out, capabilities.properties);
    for (const PhRaster& raster : capabilities.rasters) {
        dumpRaster(out, raster);
    }
    for (const PhDaq& daq : capabilities.daqLists) {
        dumpDaq(out, daq);
    }
}

void dumpStation(Writer& out, const PhStationParam* station) {
    if (station == nullptr) {
        return;
    }
    out.begin("station", *station);
    out.end();
    const Writer::Nesting nesting(out);
    if (const PhProtocolParam* param = station->protocolParamIfAny()) {
        dumpProtocolParam(out, *param);
    }
    if (const PhDaqTpCapabilities* capabilities = station->daqTpCapabilitiesIfAny()) {
        dumpDaqTpCapabilities(out, *capabilities);
    }
    if (const PhDaqCapabilities* capabilities = station->daqCapabilitiesIfAny()) {
        dumpDaqCapabilities(out, *capabilities);
    }
}

void dumpCanFd(Writer& out, const PhHandle<PhCanFdParam>& canFd) {
    if (!canFd) {
        return;
    }
    out.begin("canFd", *canFd);
    out.valueField("maxDlc", canFd->maxDlc);
    out.valueField("dataBitrate", canFd->dataBitrate);
    out.valueField("samplePoint", canFd->samplePoint);
    out.valueField("btlCycles", canFd->btlCycles);
    out.valueField("sjw", canFd->sjw);
    out.valueField("syncEdge", canFd->syncEdge);
    out.valueField("secondarySamplePoint", canFd->secondarySamplePoint);
    out.flagField("maxDlcRequired", canFd->maxDlcRequired);
    out.integerField("transceiverDelayCompensation", canFd->transceiverDelayCompensation);
    out.end();
}

void dumpFlexRayBuffer(Writer& out, const PhFlexRayBuffer& buffer) {
    out.begin("flexRayBuffer", buffer);
    out.integerField("role", buffer.role);
    out.valueField("number", buffer.number);
    out.valueField("maxLength", buffer.maxLength);
    out.valueField("slotId", buffer.slotId);
    out.end();
    const Writer::Nesting nesting(out);
    dumpProperties(out, buffer.properties);
}

void dumpTransport(Writer& out, const PhTransportParam& transport) {
    out.begin("transport", transport);
    out.codeField("transportType", PhEnumeration::TransportType, transport.transportType);
    out.textField("instanceName", transport.instanceName);
    out.valueField("slaveCanId", transport.slaveCanId);
    out.valueField("masterCanId", transport.masterCanId);
    out.valueField("stationAddress", transport.stationAddress);
    out.end();
    const Writer::Nesting nesting(out);
    dumpProperties(out, transport.properties);
    dumpCanFd(out, transport.canFd);
    for (const PhFlexRayBuffer& buffer : transport.flexRayBuffers) {
        dumpFlexRayBuffer(out, buffer);
    }
    dumpStation(out, transport.stationParamIfAny());
}

void dumpCommParam(Writer& out, const PhCommParam& param) {
    out.begin("commParam", param);
    out.codeField("protocolType", PhEnumeration::ProtocolType, param.protocolType);
    out.end();
    const Writer::Nesting nesting(out);
    dumpStation(out, param.stationParam.get());
    for (const PhTransportParam& transport : param.transports) {
        dumpTransport(out, transport);
    }
}

void dumpMemoryPage(Writer& out, const PhMemoryPage& page) {
    out.begin("memoryPage", page);
    out.codeField("use", PhEnumeration::SegmentUse, page.use);
    out.codeField("memoryType", PhEnumeration::MemoryType, page.memoryType);
    out.codeField("attribute", PhEnumeration::MemoryAttribute, page.attribute);
    out.integerField("number", page.number);
    out.integerField("addressExtension", page.addressExtension);
    if (page.address != 0) {
        out.hexField("address", static_cast<std::uint32_t>(page.address));
    }
    out.integerField("size", page.size);
    if (page.flags != 0) {
        out.hexField("flags", page.flags);
    }
    out.end();
}

template <typename T>
void dumpEach(Writer& out, const PhObjectList<T>& objects, void (*dumpOne)(Writer&, const T&)) {
    for (const T& object : objects) {
        dumpOne(out, object);
    }
}

void beginGroup(Writer& out, const PhGroup& group) {
    switch (group.documentKind()) {
        case PhDocumentKind::Project:
            out.begin("project", group);
            break;
        case PhDocumentKind::Module:
            out.begin("module", group);
            break;
        default:
            out.begin("group", group);
            out.codeField("documentKind", PhEnumeration::DocumentKind, group.documentKind());
            break;
    }
}

void dumpGroup(Writer& out, const PhGroup& group) {
    beginGroup(out, group);
    out.end();
    const Writer::Nesting nesting(out);
    dumpEach(out, group.documents, dumpGroup);
    dumpEach(out, group.conversions, dumpConversion);
    dumpEach(out, group.units, dumpUnit);
    dumpEach(out, group.recordLayouts, dumpRecordLayout);
    dumpEach(out, group.signals, dumpSignal);
    dumpEach(out, group.functions, dumpFunction);
    dumpEach(out, group.frames, dumpFrame);
    dumpEach(out, group.commParams, dumpCommParam);
    dumpEach(out, group.memoryPages, dumpMemoryPage);
    dumpProperties(out, group.properties);
}

}  // namespace

std::string dump(const PhRoot& root) {
    Writer out;
    out.begin("root", root);
    out.integerField("textEncoding", root.textEncoding);
    out.end();
    const Writer::Nesting nesting(out);
    dumpEach(out, root.documents, dumpGroup);
    return out.text();
}

}  // namespace quillmark
