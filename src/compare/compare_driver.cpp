#include "compare/compare_driver.h"

#include <array>
#include <cstddef>
#include <initializer_list>
#include <string_view>
#include <vector>

#include "compare/protocol_comparison.h"
#include "model/enumerations.h"
#include "platform/text.h"

namespace quillmark {
namespace {

constexpr int kCannotCompare = 1;

void addFailure(CompareReport& report, std::initializer_list<std::string_view> message) {
    addFinding(report, kLevelCannotCompare, joined(message));
}

/// One of the two descriptions.
struct Description {
    const std::string& path;
    std::vector<const PhGroup*> modules;
};

std::vector<const PhGroup*> modulesOf(const PhRoot& root) {
    std::vector<const PhGroup*> modules;
    forEachModule(root, [&](const PhGroup&, const PhGroup& module) { modules.push_back(&module); });
    return modules;
}

/// Both descriptions are judged before either is refused: missing modules first. Returns the number
/// of problems.
int countModuleProblems(CompareReport& report, const std::array<Description, 2>& descriptions) {
    int problems = 0;
    for (const Description& description : descriptions) {
        if (description.modules.empty()) {
            addFailure(report, {"no module found in file '", description.path, "'"});
            ++problems;
        }
    }
    for (const Description& description : descriptions) {
        if (description.modules.size() > 1) {
            addFailure(report, {"more than one module in one file is currently not supported: '",
                                description.path, "'"});
            ++problems;
        }
    }
    return problems;
}

std::string_view projectNameOf(const PhGroup& module) {
    const PhGroup* project = module.enclosing();
    return project == nullptr ? std::string_view() : project->name().view();
}

/// The protocol of the first communication parameters.
PhProtocolType protocolTypeOf(const PhGroup& module) {
    return module.commParams.empty() ? PhProtocolType::Undefined
                                     : module.commParams.at(0).protocolType;
}

std::string_view protocolTypeName(PhProtocolType type) {
    // The model's own texts stop short of GMLAN.
    constexpr std::array<std::string_view, 5> kNames = {"Undefined", "KWP", "CCP", "XCP", "GMLAN"};
    const auto code = static_cast<std::size_t>(type);
    return code < kNames.size() ? kNames[code] : kNames[0];
}

void printHeader(const Description& oldFile, const Description& newFile, Console& console) {
    const PhGroup& oldModule = *oldFile.modules.front();
    const PhGroup& newModule = *newFile.modules.front();
    console.printLine("comparing modules: ");
    console.printLine(joined({"    ", projectNameOf(oldModule), ":", oldModule.name().view(),
                              " in file ", oldFile.path}));
    console.printLine(joined({"    ", projectNameOf(newModule), ":", newModule.name().view(),
                              " in file ", newFile.path}));
    console.printLine(joined({"COMPARE MODULE \"", oldModule.name().view(), "\" with \"",
                              newModule.name().view(), "\""}));
}

void compareNames(CompareReport& report, std::string_view what, std::string_view oldName,
                  std::string_view newName) {
    if (oldName != newName) {
        addFinding(report, kLevelWarning,
                   joined({what, " names do not match: ", oldName, " != ", newName}),
                   {joined({what, " name"}), std::string(oldName), std::string(newName)});
    }
}

int compareProtocols(CompareReport& report, bool verbose, const PhGroup& oldModule,
                     const PhGroup& newModule, Console& console) {
    const PhProtocolType type = protocolTypeOf(oldModule);
    const PhProtocolType newType = protocolTypeOf(newModule);
    if (type != newType) {
        addFinding(report, kLevelCannotCompare,
                   joined({"protocol types do not match: ", protocolTypeName(type),
                           " != ", protocolTypeName(newType)}),
                   {"protocol type", std::string(protocolTypeName(type)),
                    std::string(protocolTypeName(newType))});
        return kCannotCompare;
    }
    switch (type) {
        case PhProtocolType::Ccp:
            compareCcpModules(report, verbose, oldModule, newModule, console);
            return 0;
        case PhProtocolType::Xcp:
            compareXcpModules(report, verbose, oldModule, newModule, console);
            return 0;
        case PhProtocolType::Undefined:
        case PhProtocolType::Kwp:
        case PhProtocolType::Gmlan:
            break;
    }
    addFailure(report, {"unsupported protocol type: ", protocolTypeName(type)});
    return kCannotCompare;
}

}  // namespace

int compareDescriptions(CompareReport& report, bool verbose, const std::string& oldPath,
                        const PhRoot& oldRoot, const std::string& newPath, const PhRoot& newRoot,
                        Console& console) {
    const std::array<Description, 2> descriptions = {
        Description{oldPath, modulesOf(oldRoot)},
        Description{newPath, modulesOf(newRoot)},
    };
    const int problems = countModuleProblems(report, descriptions);
    if (problems != 0) {
        return problems;
    }
    const auto& [oldFile, newFile] = descriptions;
    printHeader(oldFile, newFile, console);
    const PhGroup& oldModule = *oldFile.modules.front();
    const PhGroup& newModule = *newFile.modules.front();
    compareNames(report, "project", projectNameOf(oldModule), projectNameOf(newModule));
    compareNames(report, "module", oldModule.name().view(), newModule.name().view());
    return compareProtocols(report, verbose, oldModule, newModule, console);
}

}  // namespace quillmark
