#pragma once

#include <string>

#include "compare/compare_report.h"

namespace quillmark {

/// A report as one text, a line per finding: "1 txId values are not equal\n".
inline std::string reportText(const CompareReport& report) {
    std::string text;
    for (const CompareFinding& finding : report) {
        text += std::to_string(finding.level) + " " + finding.message + "\n";
    }
    return text;
}

}  // namespace quillmark
