#include "app/compare_command.h"

#include "app/print_finding.h"
#include "quillmark/compare.h"

namespace quillmark {

bool compareCommand(const CompareRequest& request, Console& console) {
    CompareOptions options;
    options.setVerbose(request.verbose).setFindingHandler([&](const Finding& finding) {
        printFinding(finding, console);
    });
    const CompareResult result = compareFiles(request.oldFile, request.newFile, options);
    for (const Difference& difference : result.differences()) {
        console.print(difference.consoleText());
    }
    if (result.differences().empty()) {
        console.print("No Errors.\n");
    }
    console.flush();
    return result.isComparable();
}

}  // namespace quillmark
