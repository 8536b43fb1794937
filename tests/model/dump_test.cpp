#include "support/dump.h"

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "model/module_model.h"

namespace quillmark {
namespace {

template <typename T>
T& add(PhObjectList<T>& list, PhHandle<T> object) {
    list.append(object);
    return *object;
}

template <typename T>
T& add(PhObjectList<T>& list) {
    return add(list, makePh<T>());
}

template <typename T>
T& addNamed(PhObjectList<T>& list, std::string_view name) {
    T& object = add(list);
    object.setName(PhString(name));
    return object;
}

PhHandle<PhValue> integer(std::int64_t value) {
    return PhValue::ofInteger(value);
}

PhHandle<PhTimebase> timebase(std::int32_t resolution, std::int32_t scale) {
    auto result = makePh<PhTimebase>();
    result->resolution = resolution;
    result->scale = scale;
    return result;
}

/// A root with one project and one module, and room for a test's own objects.
struct Model {
    PhHandle<PhRoot> root = makePh<PhRoot>();
    PhGroup& project = add(root->documents, makePh<PhGroup>(PhDocumentKind::Project, nullptr));
    PhGroup& module = add(project.documents, makePh<PhGroup>(PhDocumentKind::Module, &project));

    Model() {
        project.setName(PhString("Demo"));
        module.setName(PhString("Engine"));
    }

    /// What the module's own lines read, without the lines around them.
    std::string moduleText() const {
        const std::string text = dump(*root);
        const std::string_view head = "root\n  project Demo\n    module Engine\n";
        EXPECT_EQ(text.substr(0, head.size()), head);
        return text.substr(head.size());
    }
};

PhHandle<PhType> word() {
    auto type = makePh<PhType>();
    type->baseType = PhBaseType::UInteger;
    type->sizeBits = 16;
    return type;
}

void addConversions(PhGroup& module) {
    PhUnit& unit = addNamed(module.units, "km/h");
    unit.setDisplayText(PhString("km/h"));

    PhConversion& speed = addNamed(module.conversions, "CM_Speed");
    speed.conversionType = PhConversionType::Rational;
    speed.unit = PhHandle<PhUnit>(&unit);
    speed.coeffs = {PhNumber::integer(4), PhNumber::real(-3)};
    speed.denominatorCoeffs = {PhNumber::integer(2)};

    PhConversion& gear = addNamed(module.conversions, "TAB::Gear");
    gear.conversionType = PhConversionType::Table;
    gear.defaultText = PhString("?");
    gear.tableEntries.emplace_back(PhNumber::integer(0), PhNumber::integer(0), PhString("neutral"));
    gear.tableEntries.emplace_back(PhNumber::integer(1), PhNumber::real(2.5), PhNumber::integer(7));

    PhRecordLayout& layout = addNamed(module.recordLayouts, "RL_Word");
    layout.dataType = word();
}

void addSignals(PhGroup& module) {
    PhEntity& speed = addNamed(module.signals, "Speed");
    speed.signalKind = PhSignalKind::Measurement;
    speed.address = 0x4000;
    speed.extras().matrixDims = {4, 2, 1};
    speed.display().upperLimit = PhNumber::real(250.5);
    speed.datatype = *word();
    speed.datatype.conversion = PhHandle<PhConversion>(module.conversions.find("CM_Speed"));
    speed.extras().events = {{PhSignalEvent::Use::Fixed, 1}, {PhSignalEvent::Use::Fixed, 3}};
    addNamed(speed.extras().virtualMembers, "A");
    addNamed(speed.extras().virtualMembers, "B").markPlaceholder();
    PhEntity& lost = addNamed(speed.extras().virtualMembers, "C");
    lost.markPlaceholder();
    lost.markUnresolved();

    PhFunction& function = addNamed(module.functions, "G1");
    function.signals.append(PhHandle<PhEntity>(&speed));
    addNamed(function.signals, "Torque").markUnresolved();
    addNamed(function.functions, "G2");

    PhFrame& frame = addNamed(module.frames, "F1");
    frame.scalingUnit = 3;
    frame.rate = 10;
    frame.signals.append(PhHandle<PhEntity>(&speed));
}

void addRaster(PhDaqCapabilities& capabilities) {
    PhRaster& raster = add(capabilities.rasters);
    raster.shortName = PhString("10ms");
    raster.channel = integer(0);
    raster.daqSupported = true;
    raster.priority = integer(0);
    raster.timebase = timebase(10, 2);
    raster.minCycleTime = timebase(1, 2);
    raster.packedMode = makePh<PhDaqPackedMode>();
    raster.packedMode->grouping = 1;
    raster.packedMode->sampleCount = integer(2);
    raster.packedMode->alternativeSampleCounts.append(integer(4));
    raster.packedMode->alternativeSampleCounts.append(integer(8));
}

void addDaq(PhDaqCapabilities& capabilities) {
    PhDaq& daq = add(capabilities.daqLists);
    daq.direction = 1;
    daq.number = integer(0);
    daq.length = integer(3);
    PhOdt& odt = add(daq.odts);
    odt.number = integer(0);
    PhOdtEntry& entry = add(odt.entries);
    entry.number = integer(0);
    entry.address = integer(256);
    entry.size = integer(4);
}

void addStation(PhStationParam& station) {
    station.protocolParam().encoding = PhByteOrder::LittleEndian;
    PhProperties& properties = *station.protocolParam().properties;
    properties.setInteger("protocol_version", 256);
    PhValue::List& commands = properties.list("optional_cmd");
    commands.push_back(integer(248));
    commands.back()->setName(PhString("GET_SEED"));
    commands.push_back(integer(7));

    PhDaqTpCan& daqTpCan = add(station.daqTpCapabilities().daqLists);
    daqTpCan.number = integer(0);
    daqTpCan.canId = integer(1281);

    PhDaqCapabilities& capabilities = station.daqCapabilities();
    capabilities.configType = 2;
    capabilities.maxDaq = integer(4);
    capabilities.resumeSupported = true;
    capabilities.timebase = timebase(1, 3);
    capabilities.timebase->byteLength = integer(4);
    capabilities.timebase->fixed = true;
    capabilities.properties->setInteger("timestamp_size", 4);
    addRaster(capabilities);
    addDaq(capabilities);
}

void addTransport(PhCommParam& xcp) {
    PhTransportParam& transport = add(xcp.transports);
    transport.transportType = PhTransportType::Can;
    transport.slaveCanId = integer(1281);
    transport.masterCanId = integer(1280);
    transport.properties->setInteger("bitrate", 500000);
    transport.canFd = makePh<PhCanFdParam>();
    transport.canFd->maxDlc = integer(8);
    transport.canFd->dataBitrate = integer(2000000);
    PhFlexRayBuffer& buffer = add(transport.flexRayBuffers);
    buffer.role = 1;
    buffer.number = integer(2);
    transport.stationParam();
}

TEST(Dump, TellsTheWholeModel) {
    Model model;
    model.root->textEncoding = 5;
    model.project.setLongIdentifier(PhString("A project"));
    addConversions(model.module);
    addSignals(model.module);
    PhCommParam& xcp = addNamed(model.module.commParams, "XCP");
    xcp.protocolType = PhProtocolType::Xcp;
    addStation(*xcp.stationParam);
    addTransport(xcp);
    PhMemoryPage& page = addNamed(model.module.memoryPages, "Seg");
    page.use = PhSegmentUse::Code;
    page.memoryType = PhMemoryType::Flash;
    page.address = 0x8000;
    page.size = 1024;
    model.module.obtainProperties().setText("version", "1.0");

    // The example of the header, word by word.
    EXPECT_EQ(dump(*model.root), R"(root textEncoding=5
  project Demo longIdentifier="A project"
    module Engine
      conversion CM_Speed conversionType=CtRational unit=km/h
        coeffs 4 -3.0
        denominatorCoeffs 2
      conversion TAB::Gear conversionType=CtTable defaultText="?"
        tableEntry lower=0 upper=0 text="neutral"
        tableEntry lower=1 upper=2.5 output=7
      unit km/h displayText="km/h"
      recordLayout RL_Word
        dataType baseType=BtUInteger sizeBits=16
      signal Speed signalKind=Measurement address=0x4000 upperLimit=250.5 matrixDims=4,2,1
        datatype baseType=BtUInteger sizeBits=16 conversion=CM_Speed
        virtualMembers A B? C!
        fixedEvents 1 3
      function G1
        signals Speed Torque!
        functions G2
      frame F1 scalingUnit=3 rate=10
        signals Speed
      commParam XCP protocolType=XCP
        station
          protocolParam encoding=LittleEndian
            properties
              value protocol_version=256
              list optional_cmd
                value GET_SEED=248
                value 7
          daqTpCapabilities
            daqTpCan number=0 canId=1281
          daqCapabilities configType=2 maxDaq=4 resumeSupported=true
            timebase resolution=1 scale=3 byteLength=4 fixed=true
            properties
              value timestamp_size=4
            raster shortName="10ms" channel=0 daqSupported=true priority=0
              timebase resolution=10 scale=2
              minCycleTime resolution=1 scale=2
              packedMode grouping=1 sampleCount=2
                alternativeSampleCounts 4 8
            daq direction=1 number=0 length=3
              odt number=0
                odtEntry number=0 address=256 size=4
        transport transportType=CAN slaveCanId=1281 masterCanId=1280
          properties
            value bitrate=500000
          canFd maxDlc=8 dataBitrate=2000000
          flexRayBuffer role=1 number=2
          station
      memoryPage Seg use=Code memoryType=Flash address=0x8000 size=1024
      properties
        value version="1.0"
)");
}

TEST(Dump, OfAnEmptyModelIsTheRootAlone) {
    EXPECT_EQ(dump(*makePh<PhRoot>()), "root\n");
}

TEST(Dump, LeavesOutWhatWasNeverTold) {
    Model model;
    add(model.module.conversions);
    add(model.module.units);
    add(model.module.recordLayouts);
    add(model.module.signals);
    add(model.module.signals).extras();
    add(model.module.functions);
    add(model.module.frames);
    add(model.module.commParams);
    add(model.module.memoryPages);
    model.module.obtainProperties();
    EXPECT_EQ(model.moduleText(),
              "      conversion\n"
              "      unit\n"
              "      recordLayout\n"
              "      signal\n"
              "      signal\n"
              "      function\n"
              "      frame\n"
              "      commParam\n"
              "        station\n"
              "      memoryPage\n");
}

TEST(Dump, MakesNoPartOfAStation) {
    Model model;
    PhCommParam& param = addNamed(model.module.commParams, "CCP");
    add(param.transports);
    dump(*model.root);
    EXPECT_EQ(param.stationParam->protocolParamIfAny(), nullptr);
    EXPECT_EQ(param.stationParam->daqTpCapabilitiesIfAny(), nullptr);
    EXPECT_EQ(param.stationParam->daqCapabilitiesIfAny(), nullptr);
    EXPECT_EQ(param.transports.at(0).stationParamIfAny(), nullptr);
}

TEST(Dump, TellsPartsThatWereMadeAndHoldNothing) {
    Model model;
    PhCommParam& param = addNamed(model.module.commParams, "CCP");
    param.stationParam->protocolParam();
    param.stationParam->daqTpCapabilities();
    param.stationParam->daqCapabilities();
    EXPECT_EQ(model.moduleText(),
              "      commParam CCP\n"
              "        station\n"
              "          protocolParam\n"
              "          daqTpCapabilities\n"
              "          daqCapabilities\n");
}

TEST(Dump, MarksReferencesAndDefinitions) {
    Model model;
    PhConversion& table = addNamed(model.module.conversions, "TAB::T");
    table.markPlaceholder();
    PhConversion& method = addNamed(model.module.conversions, "CM");
    method.tableRef = PhHandle<PhConversion>(&table);
    method.unit = makePh<PhUnit>();
    method.unit->setName(PhString(""));
    PhEntity& signal = addNamed(model.module.signals, "S");
    signal.recordLayout = makePh<PhRecordLayout>();
    signal.recordLayout->setName(PhString("RL[0].x"));
    signal.recordLayout->markPlaceholder();
    signal.recordLayout->markUnresolved();
    signal.datatype.unit = makePh<PhUnit>();
    EXPECT_EQ(model.moduleText(),
              "      conversion TAB::T?\n"
              "      conversion CM unit=\"\" tableRef=TAB::T?\n"
              "      signal S recordLayout=RL[0].x!\n"
              "        datatype unit=\"\"\n");
}

TEST(Dump, TellsEveryFieldOfASignal) {
    Model model;
    PhEntity& signal = addNamed(model.module.signals, "S");
    signal.setLongIdentifier(PhString(""));
    signal.signalKind = PhSignalKind::Cube5;
    signal.byteOrder = PhByteOrder::BigEndian;
    signal.bitOperation = PhBitOperation::RightShift;
    signal.layout = PhLayout::ColumnDirection;
    signal.signExtend = true;
    signal.extras().shiftCount = -4;
    signal.extras().matrixDims = {2, 3, 0};
    signal.address = -1;
    signal.addressExtension = 0;
    signal.display().lowerLimit = PhNumber::integer(0);
    signal.display().upperLimit = PhNumber::real(1e22);
    signal.datatype = *word();
    signal.datatype.sizeBits = -8;
    signal.datatype.bitMask = -1;
    signal.datatype.unit = makePh<PhUnit>();
    signal.datatype.unit->setName(PhString("U"));
    signal.datatype.conversion = makePh<PhConversion>();
    signal.datatype.conversion->setName(PhString("C"));
    signal.recordLayout = makePh<PhRecordLayout>();
    signal.recordLayout->setName(PhString("R"));
    using Use = PhSignalEvent::Use;
    signal.extras().events = {
        {Use::Consistency, 3}, {Use::Available, 1}, {Use::Default, 2}, {Use::Consistency, 4}};
    EXPECT_EQ(model.moduleText(),
              "      signal S longIdentifier=\"\" signalKind=Cube5 byteOrder=BigEndian "
              "bitOperation=RightShift layout=ColumnDirection signExtend=true "
              "address=0xffffffff addressExtension=0x0 lowerLimit=0 upperLimit=1e+22 "
              "recordLayout=R matrixDims=2,3,0 shiftCount=-4\n"
              "        datatype baseType=BtUInteger sizeBits=-8 bitMask=0xffffffff unit=U "
              "conversion=C\n"
              "        availableEvents 1\n"
              "        defaultEvents 2\n"
              "        consistencyEvents 3 4\n");
}

TEST(Dump, TellsEveryFieldOfADaqList) {
    Model model;
    PhCommParam& param = addNamed(model.module.commParams, "XCP");
    PhDaqCapabilities& capabilities = param.stationParam->daqCapabilities();
    capabilities.configType = 1;
    capabilities.optimisationType = 2;
    capabilities.addressExtension = 3;
    capabilities.identificationFieldType = 4;
    capabilities.granularityOdtEntrySize = 5;
    capabilities.overloadIndication = 6;
    capabilities.maxDaq = integer(7);
    capabilities.maxEventChannel = integer(8);
    capabilities.minDaq = integer(9);
    capabilities.maxOdtEntrySize = integer(10);
    capabilities.prescalerSupported = true;
    capabilities.resumeSupported = true;
    capabilities.pidOffSupported = true;
    capabilities.storeDaqSupported = true;
    PhRaster& raster = addNamed(capabilities.rasters, "R");
    raster.cyclic = true;
    raster.stimSupported = true;
    raster.properties = makePh<PhProperties>();
    raster.properties->setInteger("consistency", 1);
    raster.packedMode = makePh<PhDaqPackedMode>();
    raster.packedMode->timestamp = 1;
    raster.packedMode->mandatory = 1;
    PhDaq& daq = add(capabilities.daqLists);
    daq.maxOdtEntries = integer(1);
    daq.sourceId = integer(2);
    daq.firstPid = PhValue::ofNumber(PhNumber::real(3));
    PhOdtEntry& entry = add(add(daq.odts).entries);
    entry.addressExtension = integer(4);
    entry.bitOffset = integer(255);
    EXPECT_EQ(model.moduleText(),
              "      commParam XCP\n"
              "        station\n"
              "          daqCapabilities configType=1 optimisationType=2 addressExtension=3 "
              "identificationFieldType=4 granularityOdtEntrySize=5 overloadIndication=6 maxDaq=7 "
              "maxEventChannel=8 minDaq=9 maxOdtEntrySize=10 prescalerSupported=true "
              "resumeSupported=true pidOffSupported=true storeDaqSupported=true\n"
              "            raster R cyclic=true stimSupported=true\n"
              "              packedMode timestamp=1 mandatory=1\n"
              "              properties\n"
              "                value consistency=1\n"
              "            daq maxOdtEntries=1 sourceId=2 firstPid=3.0\n"
              "              odt\n"
              "                odtEntry addressExtension=4 bitOffset=255\n");
}

TEST(Dump, TellsEveryFieldOfATransport) {
    Model model;
    PhCommParam& param = addNamed(model.module.commParams, "GMLAN");
    param.protocolType = PhProtocolType::Gmlan;
    PhTransportParam& transport = add(param.transports);
    transport.transportType = PhTransportType::FlexRay;
    transport.instanceName = PhString("one");
    transport.stationAddress = integer(0);
    transport.canFd = makePh<PhCanFdParam>();
    transport.canFd->samplePoint = integer(1);
    transport.canFd->btlCycles = integer(2);
    transport.canFd->sjw = integer(3);
    transport.canFd->syncEdge = integer(4);
    transport.canFd->secondarySamplePoint = integer(5);
    transport.canFd->maxDlcRequired = true;
    transport.canFd->transceiverDelayCompensation = 1;
    PhFlexRayBuffer& buffer = add(transport.flexRayBuffers);
    buffer.maxLength = integer(6);
    buffer.slotId = integer(7);
    buffer.properties = makePh<PhProperties>();
    buffer.properties->setInteger("offset", 8);
    transport.stationParam().daqTpCapabilities();
    EXPECT_EQ(model.moduleText(),
              "      commParam GMLAN protocolType=4\n"
              "        station\n"
              "        transport transportType=9 instanceName=\"one\" stationAddress=0\n"
              "          canFd samplePoint=1 btlCycles=2 sjw=3 syncEdge=4 secondarySamplePoint=5 "
              "maxDlcRequired=true transceiverDelayCompensation=1\n"
              "          flexRayBuffer maxLength=6 slotId=7\n"
              "            properties\n"
              "              value offset=8\n"
              "          station\n"
              "            daqTpCapabilities\n");
}

TEST(Dump, TellsEveryFieldOfAMemoryPage) {
    Model model;
    PhMemoryPage& page = add(model.module.memoryPages);
    page.attribute = PhMemoryAttribute::Extern;
    page.number = 1;
    page.addressExtension = 2;
    page.address = std::numeric_limits<std::int32_t>::min();
    page.flags = 0x12;
    EXPECT_EQ(model.moduleText(),
              "      memoryPage attribute=Extern number=1 addressExtension=2 address=0x80000000 "
              "flags=0x12\n");
}

TEST(Dump, TellsValuesOfEveryType) {
    Model model;
    PhProperties& properties = model.module.obtainProperties();
    properties.setText("text", "a\"b\\c\n\t\xC3\x7F");
    properties.setInteger("two words", -1);
    properties.list("none").push_back(makePh<PhValue>());
    PhValue::List& list = properties.list("kinds");
    list.push_back(PhValue::ofNumber(PhNumber::real(4)));
    list.push_back(PhValue::ofNumber(PhNumber::real(-0.25)));
    list.push_back(makePh<PhValue>());
    list.back()->setBytes({0x0A, 0xFF});
    list.back()->setLongIdentifier(PhString("two bytes"));
    EXPECT_EQ(model.moduleText(),
              "      properties\n"
              "        value text=\"a\\\"b\\\\c\\n\\x09\\xc3\\x7f\"\n"
              "        value \"two words\"=-1\n"
              "        list none\n"
              "          value none\n"
              "        list kinds\n"
              "          value 4.0\n"
              "          value -0.25\n"
              "          value bytes:0aff longIdentifier=\"two bytes\"\n");
}

TEST(Dump, TellsOtherKindsOfDocuments) {
    auto root = makePh<PhRoot>();
    root->documents.append(makePh<PhGroup>(PhDocumentKind::Library, nullptr));
    EXPECT_EQ(dump(*root), "root\n  group documentKind=Library\n");
}

}  // namespace
}  // namespace quillmark
