#include "cfginclude/module_output.h"

#include <cstddef>
#include <new>
#include <string>
#include <utility>

#include "cfginclude/blob_codec.h"
#include "cfginclude/cfg_children.h"
#include "cfginclude/compu_method_output.h"
#include "cfginclude/include_format.h"
#include "cfginclude/signal_output.h"
#include "model/setting_names.h"
#include "platform/compiler.h"
#include "platform/text.h"

namespace quillmark {

namespace {

std::string defaultStationName(const PhGroup& project, const PhGroup& module, std::int32_t number) {
    return joined({project.name().view(), "_Module_Number_", std::to_string(number),
                   "_Module_Name_", module.name().view(), "_1"});
}

void writeSource(CfgElement& station, const PhGroup& project, const PhGroup& module,
                 const ModuleOutputSettings& settings) {
    const std::string_view projectName = project.name().view();
    const std::string_view moduleName = module.name().view();
    if (settings.features.writeJsonSource) {
        station.addJoinedValue(
            "source", {R"({"filetype":"a2l","filename":")", settings.inputFile, R"(","project":")",
                       projectName, R"(","module":")", moduleName, R"("})"});
    } else {
        station.addJoinedValue(
            "source", {"file:a2l:", settings.inputFile, ":", projectName, ":", moduleName});
    }
}

/// Has the processor fetch the conversions of signals that are written soon, and nearer by what is
/// written of these. They lie in no order: to wait for each of them in its turn takes a tenth of
/// the time in which 300 MB are converted.
void fetchConversionsAhead(const PhObjectList<PhEntity>& signals, std::size_t position) {
    constexpr std::size_t kFar = 8;
    constexpr std::size_t kNear = 4;
    const auto conversionAt = [&](std::size_t ahead) -> const PhConversion* {
        const std::size_t at = position + ahead;
        return at < signals.count() ? signals.at(at).datatype.conversion.get() : nullptr;
    };
    prefetch(conversionAt(kFar));
    if (const PhConversion* const conversion = conversionAt(kNear)) {
        prefetch(conversion->name().text());
        prefetch(&conversion->unit);
    }
}

/// Makes the two sections of a station, each an empty element until it is written.
void fillSections(CfgElement& compuMethods, CfgElement& signals, const PhGroup& module,
                  const ModuleOutputSettings& settings) {
    compuMethods.setSection([&module, settings](CfgChildren& children) {
        for (const PhConversion& conversion : module.conversions) {
            writeCompuMethod(children, conversion, settings.namePrefix, settings.features);
        }
    });
    signals.setSection([&module, settings](CfgChildren& children) {
        const IdentityFallbackNames identityFallbackNames(module.conversions, settings.features);
        for (std::size_t at = 0; at < module.signals.count(); ++at) {
            fetchConversionsAhead(module.signals, at);
            const PhEntity& signal = module.signals.at(at);
            if (isWrittenSignal(signal, settings.features)) {
                writeSignal(children, signal, settings.namePrefix, settings.features,
                            identityFallbackNames);
            }
        }
    });
}

/// Writes the sections at once and keeps their compressed text only.
void writeBlob(CfgElement& station, const PhGroup& module, const ModuleOutputSettings& settings) {
    CfgElement compuMethods("compumethods");
    CfgElement signals("signals");
    fillSections(compuMethods, signals, module, settings);

    std::string text;
    Base64Sink base64(text, kLineBreak);
    DeflateSink deflate(base64);
    compuMethods.write(deflate, false, 0);
    signals.write(deflate, false, 0);
    deflate.finish();
    base64.finish();
    if (!deflate.ok()) {
        throw std::bad_alloc();  // nothing but want of memory stops zlib, and half a blob is none
    }

    CfgElement& blob = station.addChild("blob");
    blob.addIntValue("size", base64.characterCount());
    blob.addChild("blobdata").addText(std::move(text));
}

}  // namespace

PhProtocolType stationProtocol(const PhGroup& module) {
    if (module.commParams.empty()) {
        return PhProtocolType::Undefined;
    }
    const PhProtocolType type = module.commParams.last().protocolType;
    return type == PhProtocolType::Ccp || type == PhProtocolType::Xcp ? type
                                                                      : PhProtocolType::Undefined;
}

bool writeModule(CfgElement& parent, const PhGroup& project, const PhGroup& module,
                 std::int32_t number, const ModuleOutputSettings& settings, Console& console) {
    const PhProperties* properties = module.properties.get();
    const PhValue* epk = properties == nullptr ? nullptr : properties->find(setting::kEpk);
    const PhValue* address =
        properties == nullptr ? nullptr : properties->find(setting::kEpkAddress);
    if (epk == nullptr) {
        console.printLine("ERROR: missing version");
    }
    CfgElement& station = parent.addChild("versioncheck_parameters");
    if (settings.stationName.empty()) {
        station.addValue("station", defaultStationName(project, module, number));
    } else {
        station.addValue("station", settings.stationName);
    }
    if (epk != nullptr) {
        station.addValue("version", epk->text().view());
    }
    writeSource(station, project, module, settings);
    if (address == nullptr) {
        console.printLine("ERROR: missing epk address");
    }
    station.addIntValue("epk_mta", address == nullptr ? 0 : address->toInteger());
    station.addIntValue("epk_mta_ext", 0);
    if (settings.compress) {
        writeBlob(station, module, settings);
    } else {
        CfgElement& compuMethods = station.addChild("compumethods");
        CfgElement& signals = station.addChild("signals");
        fillSections(compuMethods, signals, module, settings);
    }
    return epk != nullptr && address != nullptr;
}

}  // namespace quillmark
