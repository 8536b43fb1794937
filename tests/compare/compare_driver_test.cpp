#include "compare/compare_driver.h"

#include <gtest/gtest.h>

#include "compare/report_text.h"
#include "support/collecting_console.h"

namespace quillmark {
namespace {

/// A model with one module, and a protocol unless it is Undefined.
PhHandle<PhRoot> model(const char* projectName, const char* moduleName, PhProtocolType type) {
    auto root = makePh<PhRoot>();
    root->documents.append(makePh<PhGroup>(PhDocumentKind::Project, nullptr));
    PhGroup& project = root->documents.last();
    project.setName(PhString(projectName));
    project.documents.append(makePh<PhGroup>(PhDocumentKind::Module, &project));
    PhGroup& module = project.documents.last();
    module.setName(PhString(moduleName));
    if (type != PhProtocolType::Undefined) {
        module.commParams.append(makePh<PhCommParam>());
        module.commParams.last().protocolType = type;
    }
    return root;
}

class CompareDescriptions : public testing::Test {
  protected:
    int run(const PhHandle<PhRoot>& oldRoot, const PhHandle<PhRoot>& newRoot) {
        report.clear();
        console.out.clear();
        return compareDescriptions(report, false, "a", *oldRoot, "b", *newRoot, console);
    }

    CollectingConsole console;
    CompareReport report;
};

TEST_F(CompareDescriptions, NamesAreCompared) {
    const auto oldRoot = model("P", "ECU_A", PhProtocolType::Xcp);
    EXPECT_EQ(run(oldRoot, model("P", "ECU_B", PhProtocolType::Xcp)), 0);
    EXPECT_EQ(reportText(report), "2 module names do not match: ECU_A != ECU_B\n");
    EXPECT_EQ(console.out,
              "comparing modules: \n    P:ECU_A in file a\n    P:ECU_B in file b\n"
              "COMPARE MODULE \"ECU_A\" with \"ECU_B\"\n");
    EXPECT_EQ(run(oldRoot, model("p", "ecu_A", PhProtocolType::Xcp)), 0);
    EXPECT_EQ(reportText(report),
              "2 project names do not match: P != p\n2 module names do not match: ECU_A != "
              "ecu_A\n");
    EXPECT_EQ(run(oldRoot, oldRoot), 0);
    EXPECT_EQ(reportText(report), "");
}

TEST_F(CompareDescriptions, ProtocolsMustMatch) {
    constexpr std::pair<PhProtocolType, const char*> kTypes[] = {
        {PhProtocolType::Undefined, "Undefined"},
        {PhProtocolType::Kwp, "KWP"},
        {PhProtocolType::Ccp, "CCP"},
        {PhProtocolType::Xcp, "XCP"},
        {PhProtocolType::Gmlan, "GMLAN"},
        {PhProtocolType{77}, "Undefined"},
    };
    for (const auto& [oldType, oldName] : kTypes) {
        for (const auto& [newType, newName] : kTypes) {
            const int result = run(model("P", "M", oldType), model("P", "M", newType));
            if (oldType != newType) {
                EXPECT_EQ(result, 1);
                EXPECT_EQ(reportText(report), std::string("0 protocol types do not match: ") +
                                                  oldName + " != " + newName + "\n");
            } else if (oldType == PhProtocolType::Ccp || oldType == PhProtocolType::Xcp) {
                EXPECT_EQ(result, 0);
                EXPECT_EQ(reportText(report), "");
            } else {
                EXPECT_EQ(result, 1);
                EXPECT_EQ(reportText(report),
                          std::string("0 unsupported protocol type: ") + oldName + "\n");
            }
        }
    }
}

TEST_F(CompareDescriptions, NamesAreReportedBeforeTheProtocol) {
    EXPECT_EQ(run(model("P", "M", PhProtocolType::Xcp), model("Q", "M", PhProtocolType::Ccp)), 1);
    EXPECT_EQ(reportText(report),
              "2 project names do not match: P != Q\n0 protocol types do not match: XCP != CCP\n");
}

TEST_F(CompareDescriptions, TheFirstProtocolCounts) {
    const auto oldRoot = model("P", "M", PhProtocolType::Gmlan);
    auto& parameters = oldRoot->documents.at(0).documents.at(0).commParams;
    parameters.append(makePh<PhCommParam>());
    parameters.last().protocolType = PhProtocolType::Xcp;
    EXPECT_EQ(run(oldRoot, oldRoot), 1);
    EXPECT_EQ(reportText(report), "0 unsupported protocol type: GMLAN\n");
}

TEST_F(CompareDescriptions, OnlyModulesOfProjectsCount) {
    const auto root = model("P", "M", PhProtocolType::Xcp);
    const auto other = model("P", "M", PhProtocolType::Xcp);
    other->documents.append(makePh<PhGroup>(PhDocumentKind::Module, nullptr));
    other->documents.append(makePh<PhGroup>(PhDocumentKind::Library, nullptr));
    PhGroup& library = other->documents.last();
    library.documents.append(makePh<PhGroup>(PhDocumentKind::Module, &library));
    PhGroup& project = other->documents.at(0);
    project.documents.append(makePh<PhGroup>(PhDocumentKind::Variant, &project));
    EXPECT_EQ(run(root, other), 0);
    EXPECT_EQ(reportText(report), "");
}

}  // namespace
}  // namespace quillmark
