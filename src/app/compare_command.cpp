#include "app/compare_command.h"

#include "a2l/description.h"
#include "compare/compare_driver.h"

namespace quillmark {
namespace {

constexpr int kCannotCompare = 1;

/// Reads what can be compared. The signals are not: large descriptions leave their memory to the
/// other one. `failure` opens the message of a file that can't be read.
bool readModules(CompareReport& report, const char* failure, const std::string& path, PhRoot& root,
                 Console& console) {
    if (!readDescription(path, root, console)) {
        addFinding(report, kLevelCannotCompare, failure + path + "'");
        return false;
    }
    forEachModule(root, [](const PhGroup&, PhGroup& module) { module.releaseObjects(); });
    return true;
}

}  // namespace

int compareFiles(CompareReport& report, bool verbose, const std::string& oldPath, PhRoot& oldRoot,
                 const std::string& newPath, PhRoot& newRoot, Console& console) {
    if (!readModules(report, "Reading of file 1 failed: '", oldPath, oldRoot, console) ||
        !readModules(report, "Reading of file 2 failed: '", newPath, newRoot, console)) {
        return kCannotCompare;
    }
    return compareDescriptions(report, verbose, oldPath, oldRoot, newPath, newRoot, console);
}

}  // namespace quillmark
