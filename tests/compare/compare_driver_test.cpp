#include "compare/compare_driver.h"

#include <gtest/gtest.h>

#include "compare/report_text.h"
#include "support/collecting_console.h"
#include "support/temp_dir.h"

namespace quillmark {
namespace {

std::string module(const std::string& name) {
    return "/begin MODULE " + name + " \"\" /end MODULE ";
}

std::string project(const std::string& name, const std::string& modules) {
    return "ASAP2_VERSION 1 60 /begin PROJECT " + name + " \"\" " + modules + "/end PROJECT\n";
}

class CompareFiles : public testing::Test {
  protected:
    int run() {
        report.clear();
        console.out.clear();
        PhRoot oldRoot;
        PhRoot newRoot;
        return compareFiles(report, false, oldPath, oldRoot, newPath, newRoot, console);
    }
    void write(const std::string& oldText, const std::string& newText) {
        writeFile(oldPath, oldText);
        writeFile(newPath, newText);
    }

    TempDir dir;
    std::string oldPath = dir.file("old.a2l");
    std::string newPath = dir.file("new.a2l");
    CollectingConsole console;
    CompareReport report;
};

TEST_F(CompareFiles, OldFileMissingAndTheNewOneIsNotRead) {
    writeFile(newPath, "nonsense");
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(reportText(report), "0 Reading of file 1 failed: '" + oldPath + "'\n");
    EXPECT_EQ(console.out.find(newPath), std::string::npos);
}

TEST_F(CompareFiles, NewFileMissing) {
    writeFile(oldPath, project("P", module("M")));
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(reportText(report), "0 Reading of file 2 failed: '" + newPath + "'\n");
}

TEST_F(CompareFiles, EmptyAndBrokenFiles) {
    const std::string good = project("P", module("M"));
    for (const std::string bad : {"", "\n\n", "ASAP2_VERSION 1 60 /begin PROJECT",
                                  "ASAP2_VERSION 1 60 /begin PROJECT P \"\" /end MODULE", "\xff"}) {
        write(bad, good);
        EXPECT_EQ(run(), 1) << bad;
        EXPECT_EQ(reportText(report), "0 Reading of file 1 failed: '" + oldPath + "'\n") << bad;
        EXPECT_NE(console.out.find("-: Error (" + oldPath + ":"), std::string::npos) << console.out;
        write(good, bad);
        EXPECT_EQ(run(), 1) << bad;
        EXPECT_EQ(reportText(report), "0 Reading of file 2 failed: '" + newPath + "'\n") << bad;
        EXPECT_NE(console.out.find("-: Error (" + newPath + ":"), std::string::npos) << console.out;
    }
}

TEST_F(CompareFiles, NoModules) {
    // Only a version: a description without a project.
    write("ASAP2_VERSION 1 60", project("P", ""));
    EXPECT_EQ(run(), 2);
    EXPECT_EQ(reportText(report), "0 no module found in file '" + oldPath +
                                      "'\n0 no module found in file '" + newPath + "'\n");
    EXPECT_EQ(console.out, "");
}

TEST_F(CompareFiles, MissingModulesComeBeforeSpareOnes) {
    write(project("P", module("A") + module("B")), project("P", ""));
    EXPECT_EQ(run(), 2);
    EXPECT_EQ(reportText(report),
              "0 no module found in file '" + newPath +
                  "'\n0 more than one module in one file is currently not supported: '" + oldPath +
                  "'\n");
}

TEST_F(CompareFiles, TooManyModules) {
    const std::string two = project("P", module("A") + module("B"));
    write(two, two);
    EXPECT_EQ(run(), 2);
    EXPECT_EQ(reportText(report),
              "0 more than one module in one file is currently not supported: '" + oldPath +
                  "'\n0 more than one module in one file is currently not supported: '" + newPath +
                  "'\n");
    write(project("P", module("A")), two);
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(reportText(report),
              "0 more than one module in one file is currently not supported: '" + newPath + "'\n");
}

TEST_F(CompareFiles, ModulesWithoutProtocol) {
    write(project("P", module("M")), project("P", module("M")));
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(console.out, "comparing modules: \n    P:M in file " + oldPath +
                               "\n    P:M in file " + newPath +
                               "\nCOMPARE MODULE \"M\" with \"M\"\n");
    EXPECT_EQ(reportText(report), "0 unsupported protocol type: Undefined\n");
}

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
