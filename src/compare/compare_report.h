#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quillmark {

/// Levels of a finding.
inline constexpr int kLevelCannotCompare = 0;
inline constexpr int kLevelError = 1;
inline constexpr int kLevelWarning = 2;

/// What was compared, and its values as the verbose lines show them.
struct ComparedPair {
    std::string what;
    std::string oldText;
    std::string newText;
};

/// The values of a part that only one description has.
inline constexpr std::string_view kPresent = "present";
inline constexpr std::string_view kAbsent = "absent";

/// One line of the report on two descriptions.
struct CompareFinding {
    int level = kLevelCannotCompare;
    std::string message;
    ComparedPair pair = {};  ///< empty where nothing was compared
};

/// What `compare` found, in the order in which it was found: never sorted, never merged. Owned by
/// the command line, which prints it.
using CompareReport = std::vector<CompareFinding>;

/// Appends one finding.
inline void addFinding(CompareReport& report, int level, std::string message,
                       ComparedPair pair = {}) {
    report.push_back(CompareFinding{level, std::move(message), std::move(pair)});
}

/// A part that the new description has lost.
inline ComparedPair lostPart(std::string what) {
    return {std::move(what), std::string(kPresent), std::string(kAbsent)};
}

}  // namespace quillmark
