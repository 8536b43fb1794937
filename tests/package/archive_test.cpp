#include "package/archive.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <archive.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/file_tree.h"
#include "package/error_texts.h"
#include "platform/output_signals.h"
#include "support/refusals.h"
#include "support/system.h"
#include "support/temp_dir.h"

namespace quillmark {
namespace {

namespace fs = std::filesystem;

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class CreateArchive : public testing::Test {
  protected:
    CreateArchive() {
        fs::create_directory(dir.file("out"));
        stage("a", "content of a");
    }

    void stage(const std::string& name, const std::string& content) {
        writeFile(dir.file(name), content);
        files.push_back({dir.file(name), "userfiles/" + name});
    }

    int create() { return createArchive(target, files, 0); }

    /// Names and contents in one list.
    std::vector<std::string> packed(const std::string& path) {
        std::vector<std::string> problems;
        std::vector<std::string> entries;
        for (const golden::PackageEntry& entry : golden::readPackage(readFile(path), problems)) {
            entries.push_back(entry.name);
            entries.push_back(entry.content);
        }
        EXPECT_THAT(problems, IsEmpty());
        return entries;
    }

    std::vector<std::string> namesIn(const std::string& directory) {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(dir.file(directory))) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    TempDir dir;
    std::string target = dir.file("out/x.zpki");
    std::vector<StagedFile> files;
};

TEST_F(CreateArchive, FilesInTheirOrderAndNothingElse) {
    stage("empty", "");
    stage("0", std::string("\0\r\n\xff", 4));
    EXPECT_EQ(create(), kPackageOk);
    EXPECT_THAT(packed(target), ElementsAre("userfiles/a", "content of a", "userfiles/empty", "",
                                            "userfiles/0", std::string("\0\r\n\xff", 4)));
    EXPECT_THAT(namesIn("out"), ElementsAre("x.zpki"));
}

TEST_F(CreateArchive, ContentAroundTheBlockSize) {
    for (const std::size_t size : {std::size_t{8191}, std::size_t{8192}, std::size_t{8193},
                                   std::size_t{16384}, std::size_t{100000}}) {
        std::string content(size, '\0');
        for (std::size_t i = 0; i < size; ++i) {
            content[i] = static_cast<char>(i * 7 + i / 256);
        }
        files.clear();
        stage("b", content);
        EXPECT_EQ(create(), kPackageOk);
        EXPECT_TRUE(packed(target).at(1) == content) << size;
    }
}

TEST_F(CreateArchive, LongNamesAndNamesThatAreNoText) {
    const std::string longName(250, 'n');
    const std::string bytes = kIsWindows ? "\xb1" : "\xb1\xff";  // every code page has the first
    stage(longName, "long");
    stage(bytes, "bytes");
    EXPECT_EQ(create(), kPackageOk);
    EXPECT_THAT(packed(target), ElementsAre("userfiles/a", "content of a", "userfiles/" + longName,
                                            "long", "userfiles/" + bytes, "bytes"));
}

TEST_F(CreateArchive, Compression) {
    struct Row {
        int compression;
        std::string start;
    };
    for (const Row& row : {Row{0, "userfiles/a"}, Row{1, "\x1f\x8b"}, Row{2, "BZh"},
                           Row{3, "userfiles/a"}, Row{-1, "userfiles/a"}}) {
        if (kIsWindows && (row.compression == 1 || row.compression == 2)) {
            continue;  // what no package needs, its archive library is built without there
        }
        EXPECT_EQ(createArchive(target, files, row.compression), kPackageOk);
        EXPECT_TRUE(readFile(target).starts_with(row.start)) << row.compression;
    }
}

TEST_F(CreateArchive, ReplacesAnOldPackage) {
    writeFile(target, "old");
    fs::permissions(target, fs::perms::owner_read | fs::perms::owner_write);
    const fs::perms permissions = fs::status(target).permissions();
    EXPECT_EQ(create(), kPackageOk);
    EXPECT_EQ(packed(target).size(), 2U);
    EXPECT_EQ(fs::status(target).permissions(), permissions);
    EXPECT_THAT(namesIn("out"), ElementsAre("x.zpki"));
}

TEST_F(CreateArchive, AnIncompleteArchiveReplacesNothing) {
    files.push_back({dir.file("missing"), "userfiles/missing"});
    EXPECT_EQ(create(), kArchiveNotWritten);
    EXPECT_THAT(namesIn("out"), IsEmpty());
    writeFile(target, "old");
    EXPECT_EQ(create(), kArchiveNotWritten);
    EXPECT_THAT(namesIn("out"), ElementsAre("x.zpki"));
    EXPECT_EQ(readFile(target), "old");
}

TEST_F(CreateArchive, ContentThatDoesNotMatchItsSize) {
    if (kIsWindows) {
        GTEST_SKIP() << "on Windows no file announces another size than it has";
    }
    // A file that announces no bytes and yields some.
    files = {{"/proc/self/status", "userfiles/status"}};
    EXPECT_EQ(create(), kArchiveNotWritten);
    // One that announces some and cannot be read: filling it up would take long.
    files = {{dir.path().string(), "userfiles/directory"}};
    EXPECT_EQ(create(), kArchiveNotWritten);
    EXPECT_THAT(namesIn("out"), IsEmpty());
}

TEST_F(CreateArchive, NamesThatCannotBeWritten) {
    writeFile(dir.file("out/file"), "kept");
    for (const std::string name :
         {"missing/x.zpki", "out", "out/", "out/.", "out/file/x.zpki", "out/file/"}) {
        EXPECT_EQ(createArchive(dir.file(name), files, 0), kArchiveNotOpened) << name;
    }
    EXPECT_EQ(createArchive(dir.file("out/" + std::string(256, 'n')), files, 0), kArchiveNotOpened);
    EXPECT_EQ(createArchive("", files, 0), kArchiveNotOpened);
    EXPECT_THAT(namesIn("out"), ElementsAre("file"));
    EXPECT_EQ(readFile(dir.file("out/file")), "kept");
}

TEST_F(CreateArchive, NamesThatOnlyLinuxHasCannotBeWritten) {
    if (kIsWindows) {
        GTEST_SKIP() << "on Windows links are for users with a privilege, and there is no /proc";
    }
    fs::create_symlink("loop", dir.file("out/loop"));
    EXPECT_EQ(createArchive(dir.file("out/loop"), files, 0), kArchiveNotOpened);
    EXPECT_EQ(createArchive("/proc/x.zpki", files, 0), kArchiveNotOpened);
    EXPECT_THAT(namesIn("out"), ElementsAre("loop"));
}

TEST_F(CreateArchive, TheLongestName) {
    target = dir.file("out/" + std::string(255, 'n'));
    EXPECT_EQ(create(), kPackageOk);
    EXPECT_EQ(packed(target).size(), 2U);
}

TEST_F(CreateArchive, AForeignPartIsLeftAlone) {
    writeFile(dir.file("out/.zpki_1.part"), "foreign");
    EXPECT_EQ(create(), kPackageOk);
    EXPECT_EQ(readFile(dir.file("out/.zpki_1.part")), "foreign");
    EXPECT_THAT(namesIn("out"), ElementsAre(".zpki_1.part", "x.zpki"));
}

TEST_F(CreateArchive, ALinkStaysALink) {
    if (kIsWindows) {
        GTEST_SKIP() << "on Windows links are for users with a privilege";
    }
    fs::create_symlink("out/real.zpki", dir.file("link.zpki"));
    for (int run = 0; run < 2; ++run) {
        EXPECT_EQ(createArchive(dir.file("link.zpki"), files, 0), kPackageOk);
        EXPECT_TRUE(fs::is_symlink(dir.file("link.zpki")));
        EXPECT_EQ(packed(dir.file("out/real.zpki")).size(), 2U);
        EXPECT_THAT(namesIn("out"), ElementsAre("real.zpki"));
    }
}

TEST_F(CreateArchive, APackageThatCannotBeOpenedStaysAsItWas) {
    if (!TooManyFiles::kIsPossible) {
        GTEST_SKIP() << TooManyFiles::kWhyNot;
    }
    writeFile(target, "old package");
    int code = kPackageOk;
    {
        const std::string path = target;
        const std::vector<StagedFile> staged = files;
        const TooManyFiles refusal;
        code = createArchive(path, staged, 0);
    }
    EXPECT_EQ(code, kArchiveNotOpened);
    EXPECT_EQ(readFile(target), "old package");
    EXPECT_THAT(namesIn("out"), ElementsAre("x.zpki"));
}

TEST_F(CreateArchive, APackageThatMayNotBeWrittenStaysAsItWas) {
    writeFile(target, "old package");
    fs::permissions(target, fs::perms::owner_read);
    {
        const OrdinaryUser user;
        if (!user.isOrdinary()) {
            GTEST_SKIP() << "nothing is refused to the superuser";
        }
        EXPECT_EQ(create(), kArchiveNotOpened);
    }
    EXPECT_EQ(readFile(target), "old package");
    EXPECT_THAT(namesIn("out"), ElementsAre("x.zpki"));
}

TEST_F(CreateArchive, ATargetInADirectoryWithoutWritePermissionIsWritten) {
    if (kIsWindows) {
        GTEST_SKIP() << "on Windows a directory that is marked as read-only takes new files";
    }
    writeFile(target, "old package");
    fs::permissions(target, fs::perms::all);
    fs::permissions(dir.file("out"),
                    fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                    fs::perm_options::remove);
    {
        const OrdinaryUser user;
        if (!user.isOrdinary()) {
            GTEST_SKIP() << "nothing is refused to the superuser";
        }
        EXPECT_EQ(create(), kPackageOk);
        EXPECT_EQ(createArchive(dir.file("out/new.zpki"), files, 0), kArchiveNotOpened);
    }
    EXPECT_THAT(packed(target), ElementsAre("userfiles/a", "content of a"));
    fs::permissions(dir.file("out"), fs::perms::owner_all);
    EXPECT_THAT(namesIn("out"), ElementsAre("x.zpki"));
}

TEST_F(CreateArchive, ATargetThatNothingCanBeMovedOverIsWritten) {
    // In such a directory, as /tmp is one, files of others can be written but not replaced.
    writeFile(target, "old package");
    fs::permissions(target, fs::perms::all);
    fs::permissions(dir.file("out"), fs::perms::all | fs::perms::sticky_bit);
    {
        const OrdinaryUser user;
        if (!user.isOrdinary()) {
            GTEST_SKIP() << "nothing is refused to the superuser";
        }
        EXPECT_EQ(create(), kPackageOk);
    }
    EXPECT_THAT(packed(target), ElementsAre("userfiles/a", "content of a"));
    EXPECT_THAT(namesIn("out"), ElementsAre("x.zpki"));
}

TEST_F(CreateArchive, AStagedFileThatWasTakenAway) {
    writeFile(target, "old package");
    stage("b", "content of b");
    fs::remove(dir.file("b"));
    EXPECT_EQ(create(), kArchiveNotWritten);
    EXPECT_EQ(readFile(target), "old package");
    EXPECT_THAT(namesIn("out"), ElementsAre("x.zpki"));
}

TEST_F(CreateArchive, AFullDisk) {
    if (fs::exists("/dev/full")) {
        EXPECT_EQ(createArchive("/dev/full", files, 0), kArchiveNotWritten);
        EXPECT_TRUE(fs::is_character_file("/dev/full"));
    }
}

TEST_F(CreateArchive, SizesBeyondEightGigabytes) {
    if (kIsWindows) {
        GTEST_SKIP() << "on Windows no pipe has the name of a file";
    }
    // The size field of a tar header ends there. The archive goes into a pipe whose reader has seen
    // enough after the header, so that the gigabytes need not be written.
    constexpr std::uintmax_t kSize = std::uintmax_t{9} * 1024 * 1024 * 1024 + 7;
    files.clear();
    stage("large", "");
    fs::resize_file(dir.file("large"), kSize);
    const std::string pipe = dir.file("pipe");
    ASSERT_TRUE(makePipe(pipe));
    turnOutputSignalsIntoErrors();

    std::string head(4096, '\0');
    std::thread reader([&] {
        std::FILE* const stream = std::fopen(pipe.c_str(), "rb");
        head.resize(std::fread(head.data(), 1, head.size(), stream));
        std::fclose(stream);
    });
    EXPECT_EQ(createArchive(pipe, files, 0), kArchiveNotWritten);
    reader.join();
    EXPECT_THAT(head, HasSubstr(" size=" + std::to_string(kSize) + "\n"));
}

}  // namespace
}  // namespace quillmark
