#include "cfginclude/library_versions.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "support/collecting_console.h"
#include "support/temp_dir.h"

namespace quillmark {
namespace {

// --- ranges ---------------------------------------------------------------------------------

struct RangeRow {
    std::string_view selection;
    std::string_view range;
    int strict;
    int lenient;
};

TEST(CheckRange, FindsWhereAVersionLies) {
    constexpr std::string_view kGaps = "sigTrak+2.3.4-2.5.6+3.1.1-3.2.2+4.0.0-";
    const std::vector<RangeRow> rows = {
        // Start bounds are inclusive, end bounds exclusive.
        {"sigTrak=1.4.3", "sigTrak+1.4.4-1.5.5", 1, 1},
        {"sigTrak=1.4.4", "sigTrak+1.4.4-1.5.5", 0, 0},
        {"sigTrak=1.5.4", "sigTrak+1.4.4-1.5.5", 0, 3},
        {"sigTrak=1.5.5", "sigTrak+1.4.4-1.5.5", 3, 3},
        {"sigTrak=0.99.99", "sigTrak+1.4.4-1.5.5", 1, 1},
        {"sigTrak=2", "sigTrak+1.4.4-1.5.5", 3, 3},
        // Gaps.
        {"sigTrak=2.3.3", kGaps, 1, 1},
        {"sigTrak=2.3.4", kGaps, 0, 0},
        {"sigTrak=2.5.5", kGaps, 0, 2},
        {"sigTrak=2.5.6", kGaps, 2, 2},
        {"sigTrak=3.1.0", kGaps, 2, 0},
        {"sigTrak=3.1.1", kGaps, 0, 0},
        {"sigTrak=3.2.1", kGaps, 0, 2},
        {"sigTrak=3.99", kGaps, 2, 2},
        {"sigTrak=4.0.0", kGaps, 0, 0},
        {"sigTrak=99", kGaps, 0, 0},
        // Lenient: only the first bound knows patches.
        {"sigTrak=2021.10.0", "sigTrak+2017.06.0-2021.10.0", 3, 3},
        {"sigTrak=2021.10.5", "sigTrak+2017.06.0-2021.10.99", 0, 3},
        {"sigTrak=2017.6.0", "sigTrak+2017.06.1-2021.10.0", 1, 1},
        // Versions as texts.
        {"sigTrak=2017.06.0", "sigTrak+2017.6.0-2017.6.1", 0, 3},
        {"sigTrak=1.5", "sigTrak+1.5.0-1.5.1", 0, 3},
        {"sigTrak=1", "sigTrak+1-2", 0, 0},
        {"sigTrak=", "sigTrak+0-0.1", 0, 0},
        {"sigTrak=x.y.z", "sigTrak+0-0.0.1", 0, 3},
        {"sigTrak=1.5rc2.4beta", "sigTrak+1.5.4-1.5.5", 0, 3},
        {"sigTrak=1.5.4.9.9", "sigTrak+1.5.4-1.5.5", 0, 3},
        {"sigTrak=1. 5", "sigTrak+1.0.0-1.0.1", 0, 3},
        {"sigTrak=+1", "sigTrak+0-0.0.1", 0, 3},
        {"sigTrak=99999999999999999999", "sigTrak+4294967295-", 0, 0},
        {"sigTrak=4294967296.1", "sigTrak+4294967295.1-4294967295.2", 0, 0},
        // Selections.
        {"\t sigTrak \t=\t 1.5 ", "sigTrak+1.5.0-1.5.1", 0, 3},
        {"other=9;sigTrak=1.5", "sigTrak+1.5.0-1.5.1", 0, 3},
        {"sigTrak=1.5;sigTrak=9", "sigTrak+1.5.0-1.5.1", 0, 3},
        {"sigTrak=9=9;sigTrak=1.5", "sigTrak+1.5.0-1.5.1", 0, 3},
        {"sigTrak;;sigTrak=1.5", "sigTrak+1.5.0-1.5.1", 0, 3},
        {"sigTrak", "sigTrak+1-2", 4, 4},
        {"", "sigTrak+1-2", 4, 4},
        {"SigTrak=1", "sigTrak+1-2", 4, 4},
        {"sigTrakX=1", "sigTrak+1-2", 4, 4},
        {"other=1", "other+1-2", 4, 4},
        // Specs.
        {"sigTrak=1", "", 4, 4},
        {"sigTrak=1", "other+1-2", 4, 4},
        {"sigTrak=1", " sigTrak+1-2", 4, 4},
        {"sigTrak=1", "other+5-6;sigTrak+1-2", 0, 0},
        {"sigTrak=1", "sigTrak+5-6;sigTrak+1-2", 1, 1},
        {"sigTrak=1", "sigTrak", 0, 0},
        {"sigTrak=1", "sigTrak+", 0, 0},
        {"sigTrak=1", "sigTrak+2", 1, 1},
        {"sigTrak=3", "sigTrak+2", 0, 0},
        {"sigTrak=3", "sigTrak+2-", 0, 0},
        {"sigTrak=3", "sigTrak+2+5", 0, 0},
        {"sigTrak=1", "sigTrak+-2", 0, 0},
        // A part without any version is a start at 0.0.0, also behind the last plus.
        {"sigTrak=1", "sigTrak++5", 0, 0},
        {"sigTrak=3", "sigTrak+1-2", 3, 3},
        {"sigTrak=3", "sigTrak+1-2+", 0, 0},
        {"sigTrak=1", "sigTrak+ 1- 2", 3, 3},
    };
    for (const RangeRow& row : rows) {
        EXPECT_EQ(static_cast<int>(checkRange(row.selection, row.range, RangeMode::Strict)),
                  row.strict)
            << row.selection << " in " << row.range;
        EXPECT_EQ(static_cast<int>(checkRange(row.selection, row.range, RangeMode::Lenient)),
                  row.lenient)
            << row.selection << " in " << row.range;
    }
}

// --- selection ------------------------------------------------------------------------------

constexpr std::string_view kTop = "2023.4.2";
const std::string kFirst = "sigTrak+1.4.4-1.5.5";
const std::string kSecond = "sigTrak+1.5.5-2017.06.0";
const std::string kThird = "sigTrak+2017.06.0-2023.4.2";
const std::string kNewest = "sigTrak+2021.10.0-2023.4.2";

const std::string kTooOld = "Library version not supported. Only supporting sigTrak+1.4.4!\n";
const std::string kUnknownName = "Library software name not recognized.\n";
const std::string kTwoVersions =
    "Two library versions detected. Please use sigTrak+ instead of sigTrak=\n";
const std::string kBadFirst =
    "Invalid first libary version. Please select between 1.4.4 - 2023.4.2\n";
const std::string kBadSecond1 =
    "Invalid second library version. Please select between 1.4.4 - 1.5.4\n";
const std::string kBadSecond2 =
    "Invalid second library version. Please select between 1.5.5 - 2017.06.0\n";
const std::string kBadSecond3 =
    "Invalid second library version. Please select between 2017.06.0 - 2023.4.2\n";

std::string tooNew(const std::string& library) {
    return "Library version not supported yet. Only supporting until: 2023.4.2\n"
           "Selected library version: " +
           library + "\n";
}

std::string selected(const std::string& selection) {
    return "libraryVersion: " + selection + "\n";
}

std::string selectedWithWarning(const std::string& selection) {
    return selected(selection) +
           "Warning: The version string should be formatted the following way: -l "
           "sigTrak=2017.02.01\n";
}

// One selection and all that comes of it. Without an error text it is accepted.
struct Row {
    std::string library;
    std::string out;  // behind the line with the latest version
    std::string err;
    std::string features;  // one digit per flag
    std::string compatible;
};

std::string digits(const LibraryFeatures& features) {
    std::string text;
    for (const bool flag : {features.writeJsonSource, features.writeValueTables,
                            features.writeShiftAttributes, features.includeAsciiCharacteristics}) {
        text += flag ? '1' : '0';
    }
    return text;
}

void check(const std::vector<Row>& rows, const VersionInfo& info) {
    for (const Row& row : rows) {
        CollectingConsole console;
        const LibrarySelection result = selectLibrary(row.library, info, console);
        const std::string latest =
            info.topVersion.empty() ? "" : "Latest sigTrak version: " + info.topVersion + "\n";
        EXPECT_EQ(console.out, latest + row.out) << row.library;
        EXPECT_EQ(console.err, row.err) << row.library;
        if (row.features.empty()) {
            EXPECT_EQ(result.status, SelectionStatus::Refused) << row.library;
            continue;
        }
        EXPECT_EQ(result.status, SelectionStatus::Ok) << row.library;
        EXPECT_EQ(digits(result.features), row.features) << row.library;
        EXPECT_EQ(result.compatibleVersions, row.compatible) << row.library;
    }
}

VersionInfo infoWithTop(std::string_view top) {
    VersionInfo info;
    info.topVersion = top;
    return info;
}

Row accepted(const std::string& library, const std::string& features,
             const std::string& compatible) {
    return {library, selected(library), "", features, compatible};
}

Row refused(const std::string& library, const std::string& err) {
    return {library, selected(library), err, "", ""};
}

TEST(SelectLibrary, JudgesOneVersion) {
    check(
        {
            {"", "", "", "0000", kFirst},
            refused("sigTrak=1.4.3", kTooOld),
            refused("sigTrak=0", kTooOld),
            refused("sigTrak=", kTooOld),
            refused("sigTrak=latest", kTooOld),
            accepted("sigTrak=1.4.4", "0000", kFirst),
            accepted("sigTrak=1.5.4", "0000", kFirst),
            accepted("sigTrak=1.5.5", "1000", kSecond),
            accepted("sigTrak=1.6", "1000", kSecond),
            accepted("sigTrak=2017", "1000", kSecond),
            accepted("sigTrak=2017.05.99", "1000", kSecond),
            accepted("sigTrak=2017.06.0", "1100", kThird),
            accepted("sigTrak=2017.06.0rc1", "1100", kThird),
            accepted("sigTrak=2017.10.22", "1100", kThird),
            accepted("sigTrak=2017.10.23", "1110", kThird),
            accepted("sigTrak=2017.10.98", "1110", kThird),
            accepted("sigTrak=2017.10.99", "1100", kThird),
            accepted("sigTrak=2018.10.9", "1100", kThird),
            accepted("sigTrak=2018.10.10", "1110", kThird),
            accepted("sigTrak=2018.11", "1100", kThird),
            accepted("sigTrak=2019.02.6", "1110", kThird),
            accepted("sigTrak=2019.06.1", "1100", kThird),
            accepted("sigTrak=2019.6.2", "1110", kThird),
            accepted("sigTrak=2021.9.99", "1110", kThird),
            accepted("sigTrak=2021.10.0", "1111", kNewest),
            accepted("sigTrak=2021.10.5", "1111", kNewest),
            accepted("sigTrak=2023.3.99", "1111", kNewest),
            // The top version lies above the range but is let in by its text.
            accepted("sigTrak=2023.4.2", "1111", kNewest),
            accepted("sigTrak=2023.4.25", "1111", kNewest),
            accepted("sigTrak=2099;other=2023.4.2", "1111", kNewest),
            refused("sigTrak=2023.4.1", tooNew("sigTrak=2023.4.1")),
            refused("sigTrak=2023.04.2", tooNew("sigTrak=2023.04.2")),
            refused("sigTrak=99999999999", tooNew("sigTrak=99999999999")),
        },
        infoWithTop(kTop));
}

TEST(SelectLibrary, ReadsSelections) {
    check(
        {
            accepted("sigTrak=1.5.4;other=1", "0000", kFirst),
            accepted("sigTrak = 1.5.4", "0000", kFirst),
            accepted("sigTrak\t=\t1.5.5", "1000", kSecond),
            accepted("sigTrak=1.5.5;sigTrak=1.5.4", "1000", kSecond),
            accepted("sigTrak = 1.5.4-1.5.5", "0000", kFirst),
            {"1.5.4", selectedWithWarning("1.5.4"), "", "0000", kFirst},
            {"2021.10.0", selectedWithWarning("2021.10.0"), "", "1111", kNewest},
            {"1.4.3", selectedWithWarning("1.4.3"), kTooOld, "", ""},
            {"2024", selectedWithWarning("2024"), tooNew("2024"), "", ""},
            // A hyphen is no matter as long as "sigTrak=" is missing.
            {"1.4.4-1.5.5", selectedWithWarning("1.4.4-1.5.5"), "", "0000", kFirst},
            {"otherLib=1.5.4", selectedWithWarning("otherLib=1.5.4"), kUnknownName, "", ""},
            {"SIGTRAK=1.5.4", selectedWithWarning("SIGTRAK=1.5.4"), kUnknownName, "", ""},
            {" sigTrak=1.5.4", selectedWithWarning(" sigTrak=1.5.4"), kUnknownName, "", ""},
            {"other=1;sigTrak=1.5.4", selectedWithWarning("other=1;sigTrak=1.5.4"), "", "0000",
             kFirst},
            {"1.5.5;x", selectedWithWarning("1.5.5;x"), "", "1000", kSecond},
            refused("sigTrak", kUnknownName),
            refused("sigTrak 1.5.4", kUnknownName),
            refused("sigTrak==1.5.4", kUnknownName),
            refused("sigTrakX=1.5.4", kUnknownName),
            {"sigTrak=1.4.4-1.5.5", "", kTwoVersions, "", ""},
            {"a-b;sigTrak=1.4.4", "", kTwoVersions, "", ""},
            {"sigTrak=1.4.4;sigTrak+1.4.4-1.5.4", "", kTwoVersions, "", ""},
        },
        infoWithTop(kTop));
}

TEST(SelectLibrary, ValidatesAUserRange) {
    const auto range = [](const std::string& library, const std::string& selection,
                          const std::string& features) {
        return Row{library, selected(selection), "", features, library};
    };
    const auto invalid = [](const std::string& library, const std::string& err) {
        return Row{library, "", err, "", ""};
    };
    check(
        {
            range("sigTrak+1.4.4-1.5.4", "sigTrak=1.4.4", "0000"),
            range("sigTrak+1.5.4-1.4.4", "sigTrak=1.5.4", "0000"),
            invalid("sigTrak+1.4.4-1.5.5", kBadSecond1),
            invalid("sigTrak+1.4.4-1.4.3", kBadSecond1),
            invalid("sigTrak+1.4.4-2018.1.1", kBadSecond1),
            range("sigTrak+1.5.5-2017.05.99", "sigTrak=1.5.5", "1000"),
            invalid("sigTrak+1.5.5-2017.06.0", kBadSecond2),
            invalid("sigTrak+1.5.5-1.5.4", kBadSecond2),
            range("sigTrak+2017.06.0-2023.4.1", "sigTrak=2017.06.0", "1100"),
            range("sigTrak+2017.10.23-2019.1.1", "sigTrak=2017.10.23", "1110"),
            range("sigTrak+2021.10.0-2022.1.1", "sigTrak=2021.10.0", "1111"),
            // The top version itself is outside, and so is everything above it.
            invalid("sigTrak+2017.06.0-2023.4.2", kBadSecond3),
            invalid("sigTrak+2017.06.0-2017.05.0", kBadSecond3),
            invalid("sigTrak+2023.4.2-2023.4.3", kBadFirst),
            invalid("sigTrak+1.4.3-1.5.4", kBadFirst),
            invalid("sigTrak+-1.5.4", kBadFirst),
            // 2023.4.1 is a valid range, but no library of that minor line is below the top.
            {"sigTrak+2023.4.1-2023.4.1", selected("sigTrak=2023.4.1"),
             tooNew("sigTrak+2023.4.1-2023.4.1"), "", ""},
            // Without a hyphen the second version is 0.0.0.
            invalid("sigTrak+1.5.4", kBadSecond1),
            invalid("sigTrak+2018", kBadSecond3),
            // Only the first plus and the first hyphen count.
            range("sigTrak+1.4.4-1.5.1-9+x", "sigTrak=1.4.4", "0000"),
            invalid("other+1;sigTrak+1.4.4-1.5.4", kBadFirst),
            invalid("a-b;sigTrak+1.4.4-1.5.4", kBadFirst),
            {"other=1;sigTrak+1.4.4-1.5.4", selectedWithWarning("other=1;sigTrak=1.4.4"), "",
             "0000", "other=1;sigTrak+1.4.4-1.5.4"},
            // Blanks and tabs around the versions do not count.
            range("sigTrak+1.4.4 - 1.5.4", "sigTrak=1.4.4 ", "0000"),
            range("sigTrak+ 1.4.4 -1.5.4", "sigTrak= 1.4.4 ", "0000"),
            range("sigTrak+1.4.4-\t 1.5.4 \t", "sigTrak=1.4.4", "0000"),
            invalid("sigTrak+1.4.4 - 1.5.5", kBadSecond1),
            invalid("sigTrak+1.4.4- 1. 5.4", kBadSecond1),
        },
        infoWithTop(kTop));
}

TEST(SelectLibrary, WarnsOfRestrictions) {
    VersionInfo info = infoWithTop(kTop);
    info.restrictions = {
        {"sigTrak+2018.1.0-2019.1.0", true, "mind the gap"},
        {"other+1-2", true, "never"},
        {"", true, "never"},
        {"sigTrak+2020.1.0-2021.1.0+2021.5.0-2022.1.0", false, ""},
    };
    const std::string finding = "Invalid second library version. Please select between ";
    const std::string first = finding + "sigTrak+2018.1.0-2019.1.0\nmind the gap\n";
    const std::string last = finding + "sigTrak+2020.1.0-2021.1.0+2021.5.0-2022.1.0\n";
    const auto range = [](const std::string& from, const std::string& to, const std::string& err,
                          const std::string& features) {
        const std::string library = "sigTrak+" + from + "-" + to;
        return Row{library, selected("sigTrak=" + from), err, features, library};
    };
    check(
        {
            range("2017.6.0", "2017.7.0", "", "1100"),     // below, below
            range("2017.6.0", "2018.1.0", first, "1100"),  // below, inside
            range("2017.6.0", "2019.1.0", first, "1100"),  // below, above
            range("2018.1.0", "2018.2.0", "", "1100"),     // inside, inside
            range("2018.1.0", "2019.1.0", first, "1100"),  // inside, above
            range("2018.2.0", "2017.6.0", "", "1100"),     // inside, below
            range("2019.1.0", "2019.2.0", "", "1100"),     // above, above
            range("2019.1.0", "2020.1.0", last, "1100"),   // below, inside
            range("2019.1.0", "2021.2.0", "", "1100"),     // below, between
            range("2020.1.0", "2021.2.0", "", "1110"),     // inside, between
            range("2021.2.0", "2022.1.0", "", "1110"),     // between, above
            range("2018.1.0", "2020.1.0", first + last, "1100"),
            {"sigTrak+2018.1.0 - 2019.1.0", selected("sigTrak=2018.1.0 "), first, "1100",
             "sigTrak+2018.1.0 - 2019.1.0"},
            // A warning does not replace the judgement.
            {"sigTrak+2018.1.0-2023.4.2", "", first + last + kBadSecond3, "", ""},
            {"sigTrak+1.4.4-2019.1.0", "", first + kBadSecond1, "", ""},
        },
        info);
}

TEST(SelectLibrary, PrintsAWarningWithoutTextAsAnEmptyLine) {
    VersionInfo info = infoWithTop(kTop);
    info.restrictions = {{"sigTrak+1.5.0-1.5.2", true, ""}};
    check({{"sigTrak+1.5.0-1.5.3", selected("sigTrak=1.5.0"),
            "Invalid second library version. Please select between sigTrak+1.5.0-1.5.2\n\n", "0000",
            "sigTrak+1.5.0-1.5.3"}},
          info);
}

TEST(SelectLibrary, KnowsNoEndWithoutATopVersion) {
    check(
        {
            {"", "", "", "0000", kFirst},
            accepted("sigTrak=2099.1.1", "1111", "sigTrak+2021.10.0-"),
            accepted("sigTrak=2018", "1100", "sigTrak+2017.06.0-"),
            {"sigTrak+2018-2099", selected("sigTrak=2018"), "", "1100", "sigTrak+2018-2099"},
        },
        infoWithTop(""));
}

TEST(SelectLibrary, UsesTheTopVersionAsItStands) {
    // The blank makes the first number 0, so that everything lies above.
    check(
        {
            {"sigTrak=2022.1.1", selected("sigTrak=2022.1.1"),
             "Library version not supported yet. Only supporting until:  2023.4.2\n"
             "Selected library version: sigTrak=2022.1.1\n",
             "", ""},
            accepted("sigTrak= 2023.4.2", "1111", "sigTrak+2021.10.0- 2023.4.2"),
            accepted("sigTrak=2017.6", "1100", "sigTrak+2017.06.0- 2023.4.2"),
        },
        infoWithTop(" 2023.4.2"));
}

// A gap in the newest range, which only an odd top version can make, leaves all flags off.
TEST(SelectLibrary, KeepsTheFlagsOffInAGapOfTheNewestRange) {
    check({accepted("sigTrak=2023.1", "0000", kFirst)}, infoWithTop("2022.1.0+2024.1.0-2025.1.0"));
}

TEST(SelectLibrary, ReportsAMissingOrMalformedVersionFile) {
    const TempDir directory;
    const std::string name = directory.file("sigtrakVersions.xml");
    for (const std::string_view library : {"", "sigTrak=1.5.4", "sigTrak=1-2"}) {
        CollectingConsole console;
        EXPECT_EQ(selectLibrary(library, name, console).status, SelectionStatus::NoVersionFile);
        EXPECT_EQ(console.out, "Error: Configuration file not found!\n");
        EXPECT_EQ(console.err, "");
    }
    writeFile(name, "<v><TopVersion>1.2.3</TopVersion>");
    CollectingConsole console;
    EXPECT_EQ(selectLibrary("", name, console).status, SelectionStatus::NoVersionFile);
    EXPECT_EQ(console.out, "Error: Configuration file not found!\n");

    writeFile(name, "<v><TopVersion>2023.4.2</TopVersion></v>");
    console.out.clear();
    const LibrarySelection result = selectLibrary("sigTrak=2022.1", name, console);
    EXPECT_EQ(result.status, SelectionStatus::Ok);
    EXPECT_EQ(console.out, "Latest sigTrak version: 2023.4.2\nlibraryVersion: sigTrak=2022.1\n");
    EXPECT_EQ(result.compatibleVersions, kNewest);
}

}  // namespace
}  // namespace quillmark
