// Names that are not ASCII: bytes on their way from the command line into a package.

#include "support/local_names.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/file_tree.h"
#include "package/archive.h"
#include "package/error_texts.h"
#include "package/package_builder.h"
#include "platform/directories.h"
#include "platform/file_name.h"
#include "support/collecting_console.h"
#include "support/temp_dir.h"

namespace quillmark {
namespace {

using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;

class LocalNames : public testing::Test {
  protected:
    std::vector<std::string> namesIn(const std::string& package) {
        std::vector<std::string> problems;
        std::vector<std::string> names;
        for (const golden::PackageEntry& entry : golden::readPackage(readFile(package), problems)) {
            names.push_back(entry.name);
            contents.push_back(entry.content);
        }
        EXPECT_THAT(problems, IsEmpty());
        return names;
    }

    TempDir dir;
    std::vector<std::string> contents;
    CollectingConsole console;
};

TEST_F(LocalNames, GoThroughAWholePackage) {
    // Everything that has a name has such a one: temporary directory, description's output, user
    // files and package.
    for (const std::string& name : localNames()) {
        const std::string temp = dir.file("temp " + name);
        ASSERT_TRUE(createPrivateDirectory(temp));
        PackageOrder order;
        order.userFilePrefix = "P_";
        order.userFiles = {dir.file(name), dir.file("plain")};
        order.includeFile = dir.file("o" + name);
        order.packageFile = dir.file(name + ".zpki");
        for (const std::string& file : order.userFiles) {
            writeFile(file, "content of " + file);
        }
        writeFile(order.includeFile, "document");
        writeFile(order.packageFile, "older package");

        console.out.clear();
        contents.clear();
        EXPECT_EQ(cGenerator({temp, "20240307_140509"}, console).generate(order), 0) << console.out;
        EXPECT_THAT(namesIn(order.packageFile),
                    ElementsAreArray({"userfiles/P_" + name, std::string("userfiles/P_plain"),
                                      "deviceconf/sigtrak/o" + name}));
        EXPECT_THAT(contents, ElementsAreArray({"content of " + order.userFiles[0],
                                                "content of " + order.userFiles[1],
                                                std::string("document")}));
        const std::string staged = temp + "/20240307_140509/userfiles/P_" + name;
        EXPECT_THAT(console.out, HasSubstr("Database file " + order.userFiles[0] + " copied to " +
                                           staged + "\n"));
        EXPECT_THAT(console.out,
                    HasSubstr("File " + staged + " added to archive " + order.packageFile + "\n"));
        EXPECT_THAT(console.out, HasSubstr("Temporary file " + staged + " removed\n"));
        EXPECT_TRUE(std::filesystem::is_empty(toPath(temp)));
        EXPECT_FALSE(std::filesystem::exists(toPath(order.includeFile)));
    }
}

/// The bytes of an archive of files with these names.
std::string archiveOf(const TempDir& dir, const std::vector<std::string>& names) {
    std::vector<StagedFile> files;
    for (const std::string& name : names) {
        writeFile(dir.file(name), "x");
        files.push_back({dir.file(name), "userfiles/" + name});
    }
    EXPECT_EQ(createArchive(dir.file("x.zpki"), files, 0), kPackageOk);
    return readFile(dir.file("x.zpki"));
}

constexpr std::size_t kTarBlock = 512;
constexpr std::size_t kTypeOffset = 156;

TEST_F(LocalNames, OnlyTheyNeedAnotherHeader) {
    const std::string ascii = archiveOf(dir, {"a", "b c"});
    EXPECT_EQ(ascii[kTypeOffset], '0');
    EXPECT_EQ(ascii[2 * kTarBlock + kTypeOffset], '0');
    EXPECT_EQ(ascii.find("hdrcharset"), std::string::npos);
    for (const std::string& name : localNames()) {
        const std::string archive = archiveOf(dir, {name});
        EXPECT_EQ(archive[kTypeOffset], 'x');
        EXPECT_NE(archive.find("21 hdrcharset=BINARY\n"), std::string::npos);
        EXPECT_NE(archive.find(" path=userfiles/" + name + "\n"), std::string::npos);
    }
}

}  // namespace
}  // namespace quillmark
