#include "a2ltool/complaint.h"

#include <cstdio>

#include "platform/text.h"

namespace quillmark::a2ltool {

void complain(std::string_view text) {
    printError(joined({kToolName, ": ", text}));
}

void printError(std::string_view line) {
    std::fputs(joined({line, "\n"}).c_str(), stderr);
}

}  // namespace quillmark::a2ltool
