#include "quillmark/diff.h"

#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "library/example.h"

namespace quillmark {
namespace {

/// Each difference on a line of its own, with the module of what differs.
std::string shown(const DiffResult& result) {
    std::string text;
    for (const ModelDifference& difference : result.differences()) {
        text.append(textOf(difference.kind())).append(": ").append(difference.summary());
        text.append(difference.module().empty() ? "" : " in ").append(difference.module());
        text += "\n";
    }
    return text;
}

std::string shownDiff(const std::string& oldBlocks, const std::string& newBlocks) {
    return shown(diff(described(moduleWith(oldBlocks)), described(moduleWith(newBlocks))));
}

std::string measurement(const std::string& name, const std::string& conversion,
                        const std::string& rest = "") {
    return "/begin MEASUREMENT " + name + " \"\" UBYTE " + conversion + " 0 0 0 1 " + rest +
           " /end MEASUREMENT\n";
}

std::string linear(const std::string& name, const std::string& coefficients) {
    return "/begin COMPU_METHOD " + name + " \"\" LINEAR \"%3\" \"km/h\" COEFFS_LINEAR " +
           coefficients + " /end COMPU_METHOD\n";
}

std::string words(const std::string& rows) {
    return "/begin COMPU_VTAB words \"\" TAB_VERB " + rows + " /end COMPU_VTAB\n";
}

const std::string kAddress = "ECU_ADDRESS 0x10";

TEST(Diff, DifferencesAreValues) {
    const DiffResult result = diff(described(moduleWith(measurement("s", "C", kAddress))),
                                   described(moduleWith(measurement("s", "C"))));
    EXPECT_EQ(result.count(), 1U);
    ASSERT_EQ(result.differences().size(), 1U) << shown(result);
    const ModelDifference difference = result.differences()[0];
    EXPECT_EQ(difference.kind(), DiffKind::Address);
    EXPECT_EQ(difference.object(), DiffObject::Signal);
    EXPECT_EQ(textOf(difference.object()), "signal");
    EXPECT_EQ(difference.module(), "M");
    EXPECT_EQ(difference.name(), "s");
    EXPECT_EQ(difference.oldValue(), "0x10");
    EXPECT_EQ(difference.newValue(), std::nullopt);
    EXPECT_EQ(difference.sentence(), "");
    EXPECT_EQ(difference.summary(), "signal s: 0x10 -> nothing");
}

TEST(Diff, SettingsHaveTheSentencesOfCompare) {
    const auto withName = [](const std::string& name) {
        return described("ASAP2_VERSION 1 60 /begin PROJECT P \"\" /begin MODULE " + name +
                         " \"\" /begin IF_DATA XCP /end IF_DATA /end MODULE /end PROJECT\n");
    };
    const DiffResult result = diff(withName("A"), withName("B"));
    ASSERT_EQ(result.differences().size(), 1U) << shown(result);
    EXPECT_EQ(result.differences()[0].object(), DiffObject::Setting);
    EXPECT_EQ(result.differences()[0].sentence(), "module names do not match: A != B");
    EXPECT_EQ(shown(result), "name: module names do not match: A != B\n");
}

TEST(Diff, WhatCameAndWhatWent) {
    EXPECT_EQ(shownDiff(measurement("a", "C", kAddress) + measurement("b", "C"),
                        measurement("b", "C") + measurement("c", "C", kAddress)),
              "removed: signal a: 0x10 in M\nadded: signal c: 0x10 in M\n");
}

TEST(Diff, ADescriptionDoesNotDifferFromItself) {
    const Description description = engine();
    EXPECT_EQ(diff(description, description).count(), 0U);
    // Not even where a name is there twice, with something else behind it.
    const Description twice =
        described(moduleWith(linear("c", "1 0") + linear("c", "2 0") +
                             measurement("s", "c", kAddress) + measurement("s", "c")));
    ASSERT_TRUE(twice.isComplete());
    EXPECT_EQ(diff(twice, twice).count(), 0U) << shown(diff(twice, twice));
}

TEST(Diff, ConversionsThatCalculateSomethingElse) {
    EXPECT_EQ(shownDiff(linear("c", "2 1"), linear("c", "4 1")),
              "conversion: conversion c: LINEAR 2 1, km/h -> LINEAR 4 1, km/h in M\n");
    EXPECT_EQ(shownDiff(linear("c", "2 1"), linear("c", "2.0 1")),
              "conversion: conversion c: LINEAR 2 1, km/h -> LINEAR 2.0 1, km/h in M\n");
}

TEST(Diff, OfTablesTheFirstRowThatDiffers) {
    EXPECT_EQ(shownDiff(words("2 0 \"off\" 1 \"on\""), words("2 0 \"off\" 1 \"in\"")),
              "conversion: table words: TAB_NOINTP, 2 rows, 1 = on -> TAB_NOINTP, 2 rows, 1 = in "
              "in M\n");
    EXPECT_EQ(shownDiff(words("1 0 \"off\""), words("2 0 \"off\" 1 \"in\"")),
              "conversion: table words: TAB_NOINTP, 1 row -> TAB_NOINTP, 2 rows, 1 = in in M\n");
}

TEST(Diff, AConversionThatIsNoLongerDefined) {
    EXPECT_EQ(shownDiff(linear("c", "2 1") + measurement("s", "c"), measurement("s", "c")),
              "conversion: signal s: c -> c (not defined) in M\n"
              "unit: signal s: km/h -> nothing in M\n");
}

TEST(Diff, KindsCanBePassedOver) {
    const Description older = described(moduleWith(measurement("s", "C", kAddress)));
    const Description newer = described(moduleWith(measurement("t", "C", kAddress)));
    DiffOptions options;
    options.setIgnored(DiffKind::Added);
    DiffOptions copy = options;
    copy.setIgnored(DiffKind::Removed).setIgnored(DiffKind::Added, false);
    EXPECT_EQ(shown(diff(older, newer, options)), "removed: signal s: 0x10 in M\n");
    options = std::move(copy);
    EXPECT_EQ(shown(diff(older, newer, options)), "added: signal t: 0x10 in M\n");
}

TEST(Diff, AHandlerIsToldInsteadOfTheResult) {
    std::string told;
    DiffOptions options;
    options.setHandler([&](const ModelDifference& difference) { told += difference.summary(); });
    const DiffResult result =
        diff(described(moduleWith("")), described(moduleWith(measurement("s", "C"))), options);
    EXPECT_EQ(told, "signal s");
    EXPECT_EQ(result.count(), 1U);
    EXPECT_TRUE(result.differences().empty());
}

TEST(Diff, WhatWasNotReadIsNotCompared) {
    const DiffResult result =
        diff(described(moduleWith(measurement("s", "C"))), described("mistake"));
    EXPECT_EQ(shown(result), "incomparable: Reading of file 2 failed: 'in.a2l'\n");
}

}  // namespace
}  // namespace quillmark
