#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "cfginclude/cfg_children.h"
#include "cfginclude/line_feeds.h"
#include "model/module_model.h"
#include "platform/output_sink.h"

namespace quillmark {

/// The text of what `write` adds to a section, one value or tag per line, without indentation.
template <typename Write>
std::string childrenText(Write write) {
    std::string text;
    StringSink sink(text);
    CfgChildren children(sink, false, 0);
    write(children);
    children.finish();
    sink.finish();
    return withLineFeeds(text);
}

inline std::vector<PhNumber> reals(const std::vector<double>& values) {
    std::vector<PhNumber> numbers;
    numbers.reserve(values.size());
    for (const double value : values) {
        numbers.push_back(PhNumber::real(value));
    }
    return numbers;
}

inline std::vector<PhNumber> integers(const std::vector<int>& values) {
    std::vector<PhNumber> numbers;
    numbers.reserve(values.size());
    for (const int value : values) {
        numbers.push_back(PhNumber::integer(value));
    }
    return numbers;
}

inline PhHandle<PhConversion> makeConversion(std::string_view name, PhConversionType type,
                                             std::vector<PhNumber> coeffs = {},
                                             std::vector<PhNumber> denominatorCoeffs = {}) {
    auto conversion = makePh<PhConversion>();
    conversion->setName(PhString(name));
    conversion->conversionType = type;
    conversion->coeffs = std::move(coeffs);
    conversion->denominatorCoeffs = std::move(denominatorCoeffs);
    return conversion;
}

inline PhHandle<PhUnit> makeUnit(std::string_view displayText) {
    auto unit = makePh<PhUnit>();
    unit->setDisplayText(PhString(displayText));
    return unit;
}

/// A measurement with a type of its own.
inline PhHandle<PhEntity> makeMeasurement(std::string_view name, PhBaseType baseType,
                                          std::int64_t sizeBits) {
    auto signal = makePh<PhEntity>();
    signal->setName(PhString(name));
    signal->signalKind = PhSignalKind::Measurement;
    signal->datatype.baseType = baseType;
    signal->datatype.sizeBits = sizeBits;
    return signal;
}

inline PhHandle<PhGroup> makeGroup(std::string_view name, PhDocumentKind kind,
                                   PhGroup* enclosing = nullptr) {
    auto group = makePh<PhGroup>(kind, enclosing);
    group->setName(PhString(name));
    return group;
}

inline void addProtocol(PhGroup& module, PhProtocolType type) {
    auto protocol = makePh<PhCommParam>();
    protocol->protocolType = type;
    module.commParams.append(std::move(protocol));
}

/// Adds a module that lacks nothing to a project.
inline PhGroup& addModule(PhGroup& project, std::string_view name, PhProtocolType type) {
    auto module = makeGroup(name, PhDocumentKind::Module, &project);
    if (type != PhProtocolType::Undefined) {
        addProtocol(*module, type);
    }
    module->obtainProperties().setText("mod_par/epk", "E1");
    module->obtainProperties().setInteger("mod_par/addr_epk", 0x8000);
    project.documents.append(module);
    return *module;
}

}  // namespace quillmark
