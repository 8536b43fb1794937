#include "cfginclude/module_output.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "cfginclude/blob_codec.h"
#include "cfginclude/model_making.h"
#include "support/collecting_console.h"

namespace quillmark {
namespace {

constexpr std::string_view kBothErrors = "ERROR: missing version\nERROR: missing epk address\n";

/// A project with one module, and what becomes of the module.
class ModuleOutput : public testing::Test {
  protected:
    ModuleOutput() { settings_.inputFile = "dir/F.a2l"; }

    std::string written(bool indent = false) { return withLineFeeds(exactlyWritten(indent)); }

    std::string exactlyWritten(bool indent = false) {
        CfgElement parent("xcp");
        complete_ = writeModule(parent, *project_, module_, 2, settings_, console_);
        std::string text;
        StringSink sink(text);
        parent.write(sink, indent, 0);
        sink.finish();
        return text;
    }

    /// The text of a module without conversions and signals whose first values are `values`.
    static std::string station(std::string_view values) {
        return "<xcp>\n<versioncheck_parameters>\n" + std::string(values) +
               "epk_mta_ext=0\n<compumethods>\n</compumethods>\n<signals>\n</signals>\n"
               "</versioncheck_parameters>\n</xcp>\n";
    }

    PhHandle<PhGroup> project_ = makeGroup("P", PhDocumentKind::Project);
    PhGroup& module_ = addModule(*project_, "ECU", PhProtocolType::Xcp);
    ModuleOutputSettings settings_;
    CollectingConsole console_;
    bool complete_ = false;
};

TEST_F(ModuleOutput, StationIsNamedAfterProjectNumberAndModule) {
    EXPECT_EQ(written(), station("station=P_Module_Number_2_Module_Name_ECU_1\nversion=E1\n"
                                 "source=file:a2l:dir/F.a2l:P:ECU\nepk_mta=32768\n"));
    EXPECT_TRUE(complete_);
    EXPECT_EQ(console_.out, "");
    EXPECT_EQ(console_.err, "");
}

TEST_F(ModuleOutput, GivenStationNameIsTakenAsItStands) {
    settings_.stationName = "my 'station'=1";
    settings_.namePrefix = "P_";
    EXPECT_EQ(written(), station("station=my 'station'=1\nversion=E1\n"
                                 "source=file:a2l:dir/F.a2l:P:ECU\nepk_mta=32768\n"));
}

TEST_F(ModuleOutput, SourceIsAJsonObjectForLibrariesThatReadIt) {
    settings_.features.writeJsonSource = true;
    settings_.stationName = "S";
    EXPECT_EQ(written(), station("station=S\nversion=E1\nsource={\"filetype\":\"a2l\",\"filename\":"
                                 "\"dir/F.a2l\",\"project\":\"P\",\"module\":\"ECU\"}\n"
                                 "epk_mta=32768\n"));
}

TEST_F(ModuleOutput, JsonSourceEscapesNothing) {
    settings_.features.writeJsonSource = true;
    settings_.stationName = "S";
    settings_.inputFile = "C:\\a\"b.a2l";
    project_->setName(PhString("p\"q"));
    module_.setName(PhString("m\"\n"));
    EXPECT_EQ(written(), station("station=S\nversion=E1\nsource={\"filetype\":\"a2l\",\"filename\":"
                                 "\"C:\\a\"b.a2l\",\"project\":\"p\"q\",\"module\":\"m\"\n\"}\n"
                                 "epk_mta=32768\n"));
}

TEST_F(ModuleOutput, WithoutVersionItHasNone) {
    module_.properties = {};
    module_.obtainProperties().setInteger("mod_par/addr_epk", 1);
    settings_.stationName = "S";
    EXPECT_EQ(written(), station("station=S\nsource=file:a2l:dir/F.a2l:P:ECU\nepk_mta=1\n"));
    EXPECT_FALSE(complete_);
    EXPECT_EQ(console_.out, "ERROR: missing version\n");
    EXPECT_EQ(console_.err, "");
}

TEST_F(ModuleOutput, WithoutAddressOfTheVersionItIsZero) {
    module_.properties = {};
    module_.obtainProperties().setText("mod_par/epk", "E1");
    settings_.stationName = "S";
    EXPECT_EQ(written(),
              station("station=S\nversion=E1\nsource=file:a2l:dir/F.a2l:P:ECU\nepk_mta=0\n"));
    EXPECT_FALSE(complete_);
    EXPECT_EQ(console_.out, "ERROR: missing epk address\n");
}

TEST_F(ModuleOutput, WithoutAnyPropertyBothAreMissing) {
    module_.properties = {};
    settings_.stationName = "S";
    const std::string expected = station("station=S\nsource=file:a2l:dir/F.a2l:P:ECU\nepk_mta=0\n");
    EXPECT_EQ(written(), expected);
    EXPECT_FALSE(complete_);
    EXPECT_EQ(console_.out, kBothErrors);
    console_.out.clear();
    module_.obtainProperties().setText("mod_par/ecu", "other");
    EXPECT_EQ(written(), expected);
    EXPECT_EQ(console_.out, kBothErrors);
}

TEST_F(ModuleOutput, EmptyVersionIsAVersion) {
    module_.obtainProperties().setText("mod_par/epk", "");
    settings_.stationName = "S";
    EXPECT_EQ(written(),
              station("station=S\nversion=\nsource=file:a2l:dir/F.a2l:P:ECU\nepk_mta=32768\n"));
    EXPECT_TRUE(complete_);
}

TEST_F(ModuleOutput, AddressIsSigned) {
    module_.obtainProperties().setInteger("mod_par/addr_epk", -2147483647 - 1);
    settings_.stationName = "S";
    EXPECT_EQ(written(), station("station=S\nversion=E1\nsource=file:a2l:dir/F.a2l:P:ECU\n"
                                 "epk_mta=-2147483648\n"));
}

TEST_F(ModuleOutput, LastProtocolDecides) {
    EXPECT_EQ(stationProtocol(module_), PhProtocolType::Xcp);
    addProtocol(module_, PhProtocolType::Ccp);
    EXPECT_EQ(stationProtocol(module_), PhProtocolType::Ccp);
    addProtocol(module_, PhProtocolType::Gmlan);
    EXPECT_EQ(stationProtocol(module_), PhProtocolType::Undefined);
    addProtocol(module_, PhProtocolType::Xcp);
    EXPECT_EQ(stationProtocol(module_), PhProtocolType::Xcp);
    addProtocol(module_, PhProtocolType::Kwp);
    EXPECT_EQ(stationProtocol(module_), PhProtocolType::Undefined);
}

TEST_F(ModuleOutput, WithoutProtocolThereIsNone) {
    const auto module = makeGroup("M", PhDocumentKind::Module);
    EXPECT_EQ(stationProtocol(*module), PhProtocolType::Undefined);
}

// --- sections ---------------------------------------------------------------------------------

constexpr std::string_view kSections =
    "<compumethods>\r\n"
    "<scaleoffset>\r\nname=N_ident\r\nscale=1\r\noffset=0\r\n</scaleoffset>\r\n"
    "<scaleoffset>\r\nname=N_lin\r\nscale=2\r\noffset=3\r\n</scaleoffset>\r\n"
    "</compumethods>\r\n"
    "<signals>\r\n"
    "<signal>\r\nname=N_b\r\nnum_bytes=1\r\nsigned=signed\r\n</signal>\r\n"
    "<signal>\r\nname=N_a\r\ncompumethod=N_lin\r\nnum_bytes=2\r\nsigned=unsigned\r\n</signal>\r\n"
    "</signals>\r\n";

class ModuleSections : public ModuleOutput {
  protected:
    ModuleSections() {
        const auto ident = makeConversion("ident", PhConversionType::Identity);
        const auto linear = makeConversion("lin", PhConversionType::Linear, integers({2, 3}));
        module_.conversions.append(ident);
        module_.conversions.append(makeConversion("TAB::t", PhConversionType::Table));
        module_.conversions.append(linear);
        const auto b = makeMeasurement("b", PhBaseType::Integer, 8);
        b->datatype.conversion = ident;
        const auto a = makeMeasurement("a", PhBaseType::UInteger, 16);
        a->datatype.conversion = linear;
        const auto curve = makeMeasurement("curve", PhBaseType::UInteger, 16);
        curve->signalKind = PhSignalKind::Curve;
        const auto text = makeMeasurement("text", PhBaseType::StringAscii, 80);
        text->signalKind = PhSignalKind::Ascii;
        for (const auto& signal : {b, curve, text, a}) {
            module_.signals.append(signal);
        }
        settings_.namePrefix = "N_";
    }
};

TEST_F(ModuleSections, AreWrittenInTheModelsOrder) {
    const std::string text = exactlyWritten();
    const std::string expected =
        "epk_mta_ext=0\r\n" + std::string(kSections) + "</versioncheck_parameters>\r\n</xcp>\r\n";
    ASSERT_GE(text.size(), expected.size());
    EXPECT_EQ(text.substr(text.size() - expected.size()), expected);
}

TEST_F(ModuleSections, TextsAreWrittenForLibrariesThatRecordThem) {
    settings_.features.includeAsciiCharacteristics = true;
    EXPECT_NE(written().find("</signal>\n<signal>\nname=N_text\nnum_bytes=10\nsigned=unsigned\n"
                             "</signal>\n<signal>\nname=N_a\n"),
              std::string::npos);
}

TEST_F(ModuleSections, AreIndentedWhereTheyStand) {
    EXPECT_NE(written(true).find("        epk_mta_ext=0\n"
                                 "        <compumethods>\n"
                                 "            <scaleoffset>\n"
                                 "                name=N_ident\n"),
              std::string::npos);
}

TEST_F(ModuleSections, AreOneBlobWhenCompressed) {
    std::string stream;
    ASSERT_EQ(compressBuffer(kSections, stream), 0);
    std::string base64;
    const std::int64_t size = base64Encode(stream, base64, "\r\n");

    settings_.compress = true;
    const std::string blob =
        "epk_mta_ext=0\r\n<blob>\r\nsize=" + std::to_string(size) + "\r\n<blobdata>\r\n" + base64 +
        "\r\n</blobdata>\r\n</blob>\r\n</versioncheck_parameters>\r\n</xcp>\r\n";
    const std::string text = exactlyWritten();
    ASSERT_GE(text.size(), blob.size());
    EXPECT_EQ(text.substr(text.size() - blob.size()), blob);
}

TEST_F(ModuleSections, AreNeverIndentedInsideTheBlob) {
    settings_.compress = true;
    const std::string text = exactlyWritten(true);
    EXPECT_NE(text.find("        epk_mta_ext=0\r\n        <blob>\r\n            size="),
              std::string::npos);
    EXPECT_NE(text.find("\r\n            <blobdata>\r\neJ"), std::string::npos);
    std::string expanded;
    StringSink sink(expanded);
    ASSERT_TRUE(expandBlob(text, sink));
    sink.finish();
    EXPECT_NE(expanded.find("        epk_mta_ext=0\r\n        " + std::string(kSections) +
                            "    </versioncheck_parameters>\r\n"),
              std::string::npos);
}

// Every way in which the compressed bytes can fill up the groups of base64.
TEST_F(ModuleSections, BlobExpandsToThePlainText) {
    unsigned seen = 0;
    for (int i = 0; seen != 7U; ++i) {
        ASSERT_LT(i, 200);
        module_.signals.append(
            makeMeasurement("more_" + std::to_string(i * i * 7919), PhBaseType::Integer, 8 * i));
        settings_.compress = false;
        const std::string plain = exactlyWritten();
        settings_.compress = true;
        const std::string packed = exactlyWritten();

        const auto blob = findBlob(packed);
        ASSERT_TRUE(blob.has_value());
        std::string base64(blob->data);
        std::erase_if(base64, [](char c) { return c == '\r' || c == '\n'; });
        EXPECT_NE(packed.find("size=" + std::to_string(base64.size()) + "\r\n"), std::string::npos);
        std::string stream;
        seen |= 1U << base64Decode(base64, stream) % 3;

        std::string expanded;
        StringSink sink(expanded);
        ASSERT_TRUE(expandBlob(packed, sink));
        sink.finish();
        EXPECT_EQ(expanded, plain);
    }
}

}  // namespace
}  // namespace quillmark
