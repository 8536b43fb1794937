#include "model/module_model.h"

#include <utility>

#include <gtest/gtest.h>

namespace quillmark {
namespace {

PhHandle<PhGroup> makeModule() {
    return makePh<PhGroup>(PhDocumentKind::Module, nullptr);
}

/// Appends a signal that holds a unit of the test's: its count tells whether the signal lives.
PhEntity& addSignal(PhGroup& module, const PhHandle<PhUnit>& unit) {
    auto signal = makePh<PhEntity>();
    signal->datatype.unit = unit;
    module.signals.append(signal);
    return *signal;
}

void refer(PhEntity& from, PhEntity& to) {
    from.extras().virtualMembers.append(PhHandle<PhEntity>(&to));
}

void refer(PhFunction& from, PhFunction& to) {
    from.functions.append(PhHandle<PhFunction>(&to));
}

TEST(PhGroup, KnowsItsKindAndScope) {
    const auto project = makePh<PhGroup>(PhDocumentKind::Project, nullptr);
    const auto module = makePh<PhGroup>(PhDocumentKind::Module, project.get());
    EXPECT_EQ(project->kind(), PhClass::Group);
    EXPECT_EQ(module->kind(), PhClass::Group);
    EXPECT_EQ(project->documentKind(), PhDocumentKind::Project);
    EXPECT_EQ(module->documentKind(), PhDocumentKind::Module);
    EXPECT_EQ(project->enclosing(), nullptr);
    EXPECT_EQ(module->enclosing(), project.get());
    EXPECT_EQ(project->refCount(), 1);  // the scope around is not shared
}

TEST(PhGroup, MakesItsPropertiesAtFirstUse) {
    const auto module = makeModule();
    EXPECT_FALSE(module->properties);
    module->obtainProperties().setInteger("a", 1);
    ASSERT_TRUE(module->properties);
    EXPECT_EQ(&module->obtainProperties(), module->properties.get());
}

TEST(PhGroup, ReleasesSignalsThatReferToThemselves) {
    const auto unit = makePh<PhUnit>();
    {
        const auto module = makeModule();
        PhEntity& signal = addSignal(*module, unit);
        refer(signal, signal);
        EXPECT_EQ(unit->refCount(), 2);
    }
    EXPECT_EQ(unit->refCount(), 1);
}

TEST(PhGroup, ReleasesSignalsThatReferToEachOther) {
    const auto unit = makePh<PhUnit>();
    {
        const auto module = makeModule();
        PhEntity& first = addSignal(*module, unit);
        PhEntity& second = addSignal(*module, unit);
        refer(first, second);
        refer(second, first);
    }
    EXPECT_EQ(unit->refCount(), 1);
}

TEST(PhGroup, ReleasesSignalsThatReferAcrossModules) {
    const auto unit = makePh<PhUnit>();
    {
        const auto root = makePh<PhRoot>();
        root->documents.append(makeModule());
        root->documents.append(makeModule());
        PhEntity& first = addSignal(root->documents.at(0), unit);
        PhEntity& second = addSignal(root->documents.at(1), unit);
        refer(first, second);
        refer(second, first);
    }
    EXPECT_EQ(unit->refCount(), 1);
}

TEST(PhGroup, ReleasesFunctionsThatReferToThemselvesAndEachOther) {
    const auto unit = makePh<PhUnit>();
    {
        const auto module = makeModule();
        PhEntity& signal = addSignal(*module, unit);
        module->functions.append(makePh<PhFunction>());
        module->functions.append(makePh<PhFunction>());
        PhFunction& first = module->functions.at(0);
        PhFunction& second = module->functions.at(1);
        first.signals.append(PhHandle<PhEntity>(&signal));
        refer(first, first);
        refer(first, second);
        refer(second, first);
    }
    EXPECT_EQ(unit->refCount(), 1);
}

// Recursion over the whole chain would overflow the stack.
constexpr std::size_t kChain = 300000;

TEST(PhGroup, LongChainsDieOneByOne) {
    const auto unit = makePh<PhUnit>();
    for (const bool forward : {true, false}) {
        const auto module = makeModule();
        for (std::size_t i = 0; i < kChain; ++i) {
            addSignal(*module, unit);
            module->functions.append(makePh<PhFunction>());
        }
        for (std::size_t i = 0; i + 1 < kChain; ++i) {
            const std::size_t from = forward ? i : i + 1;
            const std::size_t to = forward ? i + 1 : i;
            refer(module->signals.at(from), module->signals.at(to));
            refer(module->functions.at(from), module->functions.at(to));
        }
    }
    EXPECT_EQ(unit->refCount(), 1);
}

TEST(PhGroup, SharedConversionOutlivesItsModule) {
    const auto signal = makePh<PhEntity>();
    {
        const auto module = makeModule();
        auto conversion = makePh<PhConversion>();
        conversion->setName(PhString("CM"));
        signal->datatype.conversion = conversion;
        module->conversions.append(std::move(conversion));
    }
    EXPECT_EQ(signal->datatype.conversion->name().view(), "CM");
    EXPECT_EQ(signal->datatype.conversion->refCount(), 1);
}

TEST(PhRoot, HasNothingAtFirst) {
    const auto root = makePh<PhRoot>();
    EXPECT_EQ(root->kind(), PhClass::Root);
    EXPECT_TRUE(root->documents.empty());
    EXPECT_EQ(root->textEncoding, 0);
    EXPECT_EQ(root->logger, nullptr);
}

}  // namespace
}  // namespace quillmark
