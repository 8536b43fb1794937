#pragma once

#include "platform/console.h"
#include "quillmark/finding.h"

namespace quillmark {

/// Prints the console's line of a finding.
inline void printFinding(const Finding& finding, Console& console) {
    const std::string_view text = finding.consoleText();
    if (finding.isForStandardError()) {
        console.printError(text.substr(0, text.size() - 1));
        return;
    }
    console.print(text);
    console.flush();  // whoever watches a long run, or ends it, has seen what was found so far
}

}  // namespace quillmark
