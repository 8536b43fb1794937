#include "a2ltool/reading.h"

#include <cstdint>
#include <list>

#include "a2ltool/complaint.h"
#include "a2ltool/input.h"

namespace quillmark::a2ltool {
namespace {

/// "file:line:column: error: text", as compilers have it.
std::string lineOf(const Finding& finding) {
    std::string line(finding.file());
    for (const std::int32_t number : {finding.line(), finding.column()}) {
        if (number > 0) {
            line.append(":").append(std::to_string(number));
        }
    }
    return line.append(": ").append(textOf(finding.severity())).append(": ").append(finding.text());
}

}  // namespace

const Description* readWhole(const std::string& name, const ReadOptions& options) {
    Input input(name);
    static auto& descriptions = *new std::list<Description>;
    const Description& description = descriptions.emplace_back(input.read(options));
    if (description.status() == ReadStatus::NotOpened) {
        complain("cannot open " + input.shownName());
        return nullptr;
    }
    for (const Finding& finding : description.findings()) {
        printError(lineOf(finding));
    }
    return description.isComplete() ? &description : nullptr;
}

}  // namespace quillmark::a2ltool
