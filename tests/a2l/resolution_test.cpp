#include "a2l/resolution.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "a2l/parsing.h"

namespace quillmark {
namespace {

PhHandle<PhConversion> conversion(std::string_view name, bool placeholder = false) {
    auto result = makePh<PhConversion>();
    result->setName(PhString(name));
    if (placeholder) {
        result->markPlaceholder();
    }
    return result;
}

PhHandle<PhEntity> signalWith(const PhHandle<PhConversion>& referred) {
    auto signal = makePh<PhEntity>();
    signal->datatype.conversion = referred;
    return signal;
}

class WarningLogger final : public PhLogger {
  public:
    void message(std::string_view text) override { record += "message:" + std::string(text); }
    void warning(const char*, std::string_view, std::int32_t, std::string_view message) override {
        record += message;
    }
    void error(const char*, std::string_view, std::int32_t, std::string_view) override {
        record += "error";
    }

    std::string record;
};

struct TwoScopes {
    TwoScopes() {
        root.documents.append(outer);
        outer->documents.append(inner);
    }

    PhRoot root;
    PhHandle<PhGroup> outer = makePh<PhGroup>(PhDocumentKind::Project, nullptr);
    PhHandle<PhGroup> inner = makePh<PhGroup>(PhDocumentKind::Module, outer.get());
};

TEST(FindInScope, InnermostDefinitionWins) {
    TwoScopes model;
    model.outer->conversions.append(conversion("c"));
    model.outer->conversions.append(conversion("outer only"));
    model.inner->conversions.append(conversion("c"));
    EXPECT_EQ(findInScope(model.inner.get(), &PhGroup::conversions, "c"),
              &model.inner->conversions.at(0));
    EXPECT_EQ(findInScope(model.outer.get(), &PhGroup::conversions, "c"),
              &model.outer->conversions.at(0));
    EXPECT_EQ(findInScope(model.inner.get(), &PhGroup::conversions, "outer only"),
              &model.outer->conversions.at(1));
    EXPECT_EQ(findInScope(model.inner.get(), &PhGroup::conversions, "C"), nullptr);
}

TEST(Resolve, NestedDefinitionIsTaken) {
    TwoScopes model;
    model.outer->conversions.append(conversion("c"));
    model.inner->conversions.append(conversion("c"));
    model.inner->signals.append(signalWith(conversion("c", true)));
    EXPECT_EQ(resolve(model.root), 0);
    EXPECT_EQ(model.inner->signals.at(0).datatype.conversion.get(),
              &model.inner->conversions.at(0));
}

TEST(Resolve, RePointingSharesTheDefinitionAndDropsThePlaceholder) {
    TwoScopes model;
    model.inner->conversions.append(conversion("c"));
    const auto placeholder = conversion("c", true);
    model.inner->signals.append(signalWith(placeholder));
    resolve(model.root);
    EXPECT_EQ(placeholder->refCount(), 1);
    EXPECT_EQ(model.inner->conversions.at(0).refCount(), 2);
}

TEST(Resolve, MissingDefinitionLeavesAMarkedPlaceholderAndTellsTheLogger) {
    TwoScopes model;
    WarningLogger logger;
    model.root.logger = &logger;
    model.inner->signals.append(signalWith(conversion("gone", true)));
    auto method = conversion("c");
    method->unit = makePh<PhUnit>();
    method->unit->setName(PhString("kmh"));
    method->unit->markPlaceholder();
    method->tableRef = conversion("TAB::t", true);
    model.inner->conversions.append(method);
    resolve(model.root);
    EXPECT_TRUE(model.inner->signals.at(0).datatype.conversion->isUnresolved());
    EXPECT_EQ(logger.record,
              "Conversion 'TAB::t' unresolved.\nUnit 'kmh' unresolved.\nConversion 'gone' "
              "unresolved.\n");

    logger.record.clear();
    model.inner->conversions.append(conversion("gone"));
    resolve(model.root);
    EXPECT_EQ(logger.record, "");
    EXPECT_TRUE(model.inner->signals.at(0).datatype.conversion->isUnresolved());
}

/// A reader's warnings about references, in the order in which they are sent.
std::string unresolvedIn(std::string_view content) {
    CollectingConsole console;
    const std::string text = moduleText(content);
    MemoryInputFile input(text);
    PhRoot root;
    WarningLogger logger;
    EXPECT_EQ(PhA2l(console, "a.a2l").parse(root, input), 0);
    root.logger = &logger;
    resolve(root);
    return logger.record;
}

TEST(Resolve, ALoggerSeesOneKindAfterTheOther) {
    EXPECT_EQ(
        unresolvedIn("/begin FRAME f \"\" 0 0 FRAME_MEASUREMENT s3 /end FRAME "
                     "/begin GROUP g \"\" /begin SUB_GROUP g2 /end SUB_GROUP "
                     "/begin REF_MEASUREMENT s2 /end REF_MEASUREMENT /end GROUP "
                     "/begin MEASUREMENT m \"\" UBYTE c1 0 0 0 1 "
                     "/begin VIRTUAL s1 /end VIRTUAL /end MEASUREMENT "
                     "/begin CHARACTERISTIC k \"\" VALUE 0 r1 0 c2 0 1 /end CHARACTERISTIC "
                     "/begin CHARACTERISTIC l \"\" VALUE 0 r2 0 c3 0 1 /end CHARACTERISTIC "
                     "/begin COMPU_METHOD c3 \"\" TAB_VERB \"\" \"\" COMPU_TAB_REF t REF_UNIT "
                     "u /end COMPU_METHOD"),
        "RecordLayout 'r1' unresolved.\nRecordLayout 'r2' unresolved.\n"
        "Conversion 'TAB::t' unresolved.\nUnit 'u' unresolved.\n"
        "Conversion 'c1' unresolved.\nSignal 's1' unresolved.\n"
        "Conversion 'c2' unresolved.\n"
        "Signal 's2' unresolved.\nFunction 'g2' unresolved.\nSignal 's3' unresolved.\n");
}

TEST(Resolve, AMissingNameIsToldOnce) {
    const std::string twice =
        "/begin MEASUREMENT m \"\" UBYTE c 0 0 0 1 /begin VIRTUAL s s /end VIRTUAL "
        "/end MEASUREMENT "
        "/begin CHARACTERISTIC k \"\" VALUE 0 r 0 c 0 1 /end CHARACTERISTIC "
        "/begin COMPU_METHOD d \"\" TAB_VERB \"\" \"\" COMPU_TAB_REF t REF_UNIT u "
        "/end COMPU_METHOD "
        "/begin GROUP g \"\" /begin SUB_GROUP h h /end SUB_GROUP "
        "/begin REF_MEASUREMENT s s /end REF_MEASUREMENT /end GROUP "
        "/begin FRAME f \"\" 0 0 FRAME_MEASUREMENT s s /end FRAME ";
    EXPECT_EQ(unresolvedIn(twice + twice),
              "RecordLayout 'r' unresolved.\nConversion 'TAB::t' unresolved.\n"
              "Unit 'u' unresolved.\nConversion 'c' unresolved.\nSignal 's' unresolved.\n"
              "Function 'h' unresolved.\n");
}

TEST(Resolve, ASignalsConversionInAnOuterScopeIsResolvedWithTheSignal) {
    TwoScopes model;
    WarningLogger logger;
    model.root.logger = &logger;
    const auto outer = conversion("c");
    outer->tableRef = conversion("TAB::t", true);
    model.outer->conversions.append(conversion("b"));
    model.outer->conversions.at(0).tableRef = conversion("TAB::s", true);
    model.outer->conversions.append(outer);
    model.inner->signals.append(signalWith(conversion("c", true)));
    resolve(model.root);
    EXPECT_EQ(logger.record, "Conversion 'TAB::t' unresolved.\nConversion 'TAB::s' unresolved.\n");
}

TEST(Resolve, RealObjectsAreLeftAlone) {
    TwoScopes model;
    const auto own = conversion("c");
    model.inner->conversions.append(conversion("c"));
    model.inner->signals.append(signalWith(own));
    resolve(model.root);
    EXPECT_EQ(model.inner->signals.at(0).datatype.conversion, own);
}

TEST(Resolve, DefinitionsAfterTheirUseAreFound) {
    EXPECT_EQ(moduleDump("/begin MEASUREMENT m \"\" UBYTE CM 0 0 0 1 /end MEASUREMENT "
                         "/begin CHARACTERISTIC k \"\" VALUE 0 RL 0 CM 0 1 /end CHARACTERISTIC "
                         "/begin COMPU_METHOD CM \"\" TAB_VERB \"\" \"\" COMPU_TAB_REF T REF_UNIT "
                         "km /end COMPU_METHOD "
                         "/begin COMPU_VTAB T \"\" TAB_VERB 0 /end COMPU_VTAB "
                         "/begin UNIT km \"\" \"km\" DERIVED /end UNIT "
                         "/begin RECORD_LAYOUT RL /end RECORD_LAYOUT"),
              "conversion CM longIdentifier=\"\" conversionType=CtTable unit=km tableRef=TAB::T\n"
              "conversion TAB::T longIdentifier=\"\" conversionType=CtTable\n"
              "unit km longIdentifier=\"\" displayText=\"km\"\n"
              "recordLayout RL\n"
              "signal m longIdentifier=\"\" signalKind=Measurement lowerLimit=0 upperLimit=1\n"
              "  datatype baseType=BtUInteger sizeBits=8 conversion=CM\n"
              "signal k longIdentifier=\"\" signalKind=Value address=0x0 lowerLimit=0 upperLimit=1 "
              "recordLayout=RL\n  datatype conversion=CM\n");
}

TEST(Resolve, WithoutALoggerMissingDefinitionsAreSilent) {
    EXPECT_EQ(moduleDump("/begin MEASUREMENT m \"\" UBYTE gone 0 0 0 1 /end MEASUREMENT "
                         "/begin COMPU_METHOD CM \"\" TAB_VERB \"\" \"\" COMPU_TAB_REF T REF_UNIT "
                         "km /end COMPU_METHOD"),
              "conversion CM longIdentifier=\"\" conversionType=CtTable unit=km! tableRef=TAB::T!\n"
              "signal m longIdentifier=\"\" signalKind=Measurement lowerLimit=0 upperLimit=1\n"
              "  datatype baseType=BtUInteger sizeBits=8 conversion=gone!\n");
}

TEST(Resolve, AModuleDoesNotSeeItsNeighbour) {
    const Parsed parsed = parseText(
        "/begin PROJECT P \"\" /begin MODULE A \"\" /begin COMPU_METHOD CM \"\" LINEAR \"\" \"\" "
        "/end "
        "COMPU_METHOD /end MODULE /begin MODULE B \"\" /begin MEASUREMENT m \"\" UBYTE CM 0 0 0 1 "
        "/end "
        "MEASUREMENT /end MODULE /end PROJECT");
    EXPECT_NE(parsed.model.find("conversion=CM!"), std::string::npos);
    EXPECT_EQ(parsed.console, "");
}

TEST(Resolve, OfEqualNamesTheFirstIsFound) {
    const Parsed parsed = parseModule(
        "/begin COMPU_METHOD CM \"first\" LINEAR \"\" \"\" /end COMPU_METHOD /begin COMPU_METHOD "
        "CM "
        "\"second\" LINEAR \"\" \"\" /end COMPU_METHOD /begin MEASUREMENT m \"\" UBYTE CM 0 0 0 1 "
        "/end "
        "MEASUREMENT");
    EXPECT_EQ(parsed.status, 0);
    EXPECT_NE(parsed.model.find("longIdentifier=\"second\""), std::string::npos);
}

/// The one module of a description that is read without the pass that binds references.
class ParsedModule {
  public:
    explicit ParsedModule(std::string_view content) {
        const std::string text = moduleText(content);
        MemoryInputFile input(text);
        EXPECT_EQ(PhA2l(console_, "a.a2l").parse(root_, input), 0);
    }

    PhGroup& operator*() { return root_.documents.at(0).documents.at(0); }
    PhGroup* operator->() { return &**this; }

  private:
    CollectingConsole console_;
    PhRoot root_;
};

constexpr std::string_view kMeasurement = "/begin MEASUREMENT m \"\" UBYTE c 0 0 0 1 ";
constexpr std::string_view kGroup =
    "/begin GROUP g \"\" /begin REF_MEASUREMENT m m /end REF_MEASUREMENT /end GROUP ";

TEST(Definition, TakesThePlaceOfItsPlaceholder) {
    const std::string measurement = std::string(kMeasurement) + "/end MEASUREMENT ";
    ParsedModule module(std::string(kGroup) + measurement + measurement + std::string(kGroup));
    ASSERT_EQ(module->signals.count(), 2U);
    PhEntity& first = module->signals.at(0);
    EXPECT_FALSE(first.isPlaceholder());
    EXPECT_NE(&module->signals.at(1), &first);
    for (PhFunction& group : module->functions) {
        for (PhEntity& member : group.signals) {
            EXPECT_EQ(&member, &first);
        }
    }
}

TEST(Definition, LeavesNothingToBindWhenItWasTheLastOneMissing) {
    const std::string conversion = "/begin COMPU_METHOD c \"\" LINEAR \"\" \"\" /end COMPU_METHOD ";
    const std::string measurement = std::string(kMeasurement) + "/end MEASUREMENT ";
    EXPECT_TRUE(ParsedModule(std::string(kGroup) + measurement + conversion)->referencesAreBound);
    EXPECT_FALSE(ParsedModule(std::string(kGroup) + measurement)->referencesAreBound);
    EXPECT_FALSE(ParsedModule(std::string(kGroup) + conversion)->referencesAreBound);
}

TEST(Definition, OfASignalThatIsItsOwnMember) {
    ParsedModule module(std::string(kMeasurement) +
                        "/begin VIRTUAL m /end VIRTUAL /end MEASUREMENT ");
    resolveScope(*makePh<PhRoot>(), *module);
    PhEntity& signal = module->signals.at(0);
    EXPECT_EQ(&signal.extras().virtualMembers.at(0), &signal);
}

TEST(Definition, OfASignalThatIsItsOwnMemberAndIsDefinedTwice) {
    const std::string own =
        std::string(kMeasurement) + "/begin VIRTUAL m /end VIRTUAL /end MEASUREMENT ";
    for (const std::string& before : {std::string(), std::string(kGroup)}) {
        ParsedModule module(before + own + own);
        resolveScope(*makePh<PhRoot>(), *module);
        ASSERT_EQ(module->signals.count(), 2U);
        for (PhEntity& signal : module->signals) {
            EXPECT_FALSE(signal.isPlaceholder());
            EXPECT_EQ(&signal.extras().virtualMembers.at(0), &module->signals.at(0));
        }
    }
}

TEST(Definition, OfASignalThatIsItsOwnMemberAndIsNotFinished) {
    for (const std::string& before : {std::string(), std::string(kGroup)}) {
        EXPECT_EQ(messages(before + std::string(kMeasurement) + "/begin VIRTUAL m /end VIRTUAL 5"),
                  "Error 1: Unexpected token 'token=300' found\n");
    }
}

TEST(Definition, OfATableTakesItsPlaceholder) {
    ParsedModule module(
        "/begin COMPU_METHOD c \"\" TAB_VERB \"\" \"\" COMPU_TAB_REF c /end COMPU_METHOD "
        "/begin COMPU_VTAB c \"\" TAB_VERB 1 0 \"off\" /end COMPU_VTAB ");
    EXPECT_EQ(module->conversions.at(0).tableRef.get(), &module->conversions.at(1));
    EXPECT_TRUE(module->referencesAreBound);
}

}  // namespace
}  // namespace quillmark
