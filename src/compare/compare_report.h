#pragma once

#include <string>
#include <utility>
#include <vector>

namespace quillmark {

/// Levels of a finding.
inline constexpr int kLevelCannotCompare = 0;
inline constexpr int kLevelError = 1;
inline constexpr int kLevelWarning = 2;

/// One line of the report on two descriptions.
struct CompareFinding {
    int level = kLevelCannotCompare;
    std::string message;
};

/// What `compare` found, in the order in which it was found: never sorted, never merged. Owned by
/// the command line, which prints it.
using CompareReport = std::vector<CompareFinding>;

/// Appends one finding.
inline void addFinding(CompareReport& report, int level, std::string message) {
    report.push_back(CompareFinding{level, std::move(message)});
}

}  // namespace quillmark
