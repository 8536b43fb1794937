#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "a2l/ph_a2l.h"
#include "compare/compare_driver.h"
#include "compare/report_text.h"
#include "platform/input_file.h"
#include "support/collecting_console.h"

namespace quillmark {

/// `text` with its only occurrence of `from` replaced.
inline std::string replaced(std::string_view text, std::string_view from, std::string_view to) {
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string_view::npos) << from;
    EXPECT_EQ(text.find(from, at + 1), std::string_view::npos) << from << " is not unique";
    return std::string(text).replace(std::min(at, text.size()), from.size(), to);
}

/// `text` without what stands between two texts, both included.
inline std::string without(std::string_view text, std::string_view from, std::string_view to) {
    const std::size_t at = text.find(from);
    const std::size_t end = text.find(to, at);
    EXPECT_NE(end, std::string_view::npos) << from << " ... " << to;
    return std::string(text).erase(at, end + to.size() - at);
}

class ComparedPairs : public testing::Test {
  protected:
    /// The report on two modules with these interface data; console output is left in `shown`.
    std::string compare(std::string_view oldData, std::string_view newData, bool verbose) {
        const auto oldRoot = read(oldData);
        const auto newRoot = read(newData);
        CollectingConsole console;
        CompareReport report;
        EXPECT_EQ(compareDescriptions(report, verbose, "a", *oldRoot, "b", *newRoot, console), 0);
        constexpr std::string_view kHeader =
            "comparing modules: \n    P:M in file a\n    P:M in file b\n"
            "COMPARE MODULE \"M\" with \"M\"\n";
        EXPECT_EQ(console.out.substr(0, kHeader.size()), kHeader);
        shown = console.out.substr(kHeader.size());
        return reportText(report);
    }

    /// Both ways of comparing find the same; only the verbose one shows `lines`.
    void expectReport(std::string_view oldData, std::string_view newData, std::string_view lines,
                      std::string_view report) {
        EXPECT_EQ(compare(oldData, newData, false), report);
        EXPECT_EQ(shown, "");
        EXPECT_EQ(compare(oldData, newData, true), report);
        EXPECT_EQ(shown, lines);
    }

    std::string shown;

  private:
    static PhHandle<PhRoot> read(std::string_view data) {
        const std::string text = "ASAP2_VERSION 1 60 /begin PROJECT P \"\" /begin MODULE M \"\"" +
                                 std::string(data) + "/end MODULE /end PROJECT";
        CollectingConsole console;
        auto root = makePh<PhRoot>();
        MemoryInputFile input(text);
        EXPECT_EQ(PhA2l(console, "x").parse(*root, input), 0);
        EXPECT_EQ(console.out, "");
        return root;
    }
};

/// What is changed in the new description, the verbose line and how it reads then, and the finding;
/// by default that the field's values are not equal.
struct Change {
    std::string_view from;
    std::string_view to;
    std::string_view line;
    std::string_view changedLine;
    std::string_view finding = {};
};

inline std::string findingOf(const Change& change) {
    if (!change.finding.empty()) {
        return "1 " + std::string(change.finding) + "\n";
    }
    const std::string label(change.line.substr(2, change.line.find(" = ") - 2));
    return "1 " + label + " values are not equal\n";
}

}  // namespace quillmark
