// Prints the words of all keyword tables, and what else stands in descriptions, as a dictionary of
// libFuzzer.
#include <cstdio>
#include <string_view>

#include "a2l/tokens/keyword_tables.h"

namespace {

/// Written as the dictionary wants them: quotes and backslashes with a backslash.
constexpr std::string_view kOtherTexts[] = {
    "/begin ",
    " /end ",
    "\\\"\\\"",
    "\\\"\\\\\\\"\\\"",
    "0x",
    "0xFFFFFFFF",
    "-1",
    "2147483648",
    "1e308",
    "-0.0",
    ".5",
    "//",
    "/*",
    "*/",
    "\\x00",
    "\\xFF",
    "\\xEF\\xBB\\xBF",
    "\\x0A",
    "\\x1E",
    "TAB::",
    "[0]",
    "NULL",
    "%6.2",
    "UNIT_1PS",
    "UNIT_10PS",
    "FLOAT16_IEEE",
    " 0 0 0 0 ",
    "ASAP1B_CCP",
    "ASAP1B_GMLAN",
    "XCPplus",
};

}  // namespace

int main() {
    using namespace quillmark;
    for (const KeywordTable* table : {&kCoreKeywords, &kWordKeywords, &kXcpKeywords, &kCcpKeywords,
                                      &kKwpKeywords, &kGmlanKeywords}) {
        for (const KeywordEntry& entry : table->entries) {
            std::printf("\"%.*s\"\n", static_cast<int>(entry.text.size()), entry.text.data());
        }
    }
    for (const std::string_view text : kOtherTexts) {
        std::printf("\"%.*s\"\n", static_cast<int>(text.size()), text.data());
    }
    return 0;
}
