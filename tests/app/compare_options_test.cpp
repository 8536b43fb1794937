#include "app/compare_options.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/collecting_console.h"

namespace quillmark {
namespace {

class CompareOptions : public testing::Test {
  protected:
    bool parse(const std::vector<const char*>& arguments) {
        request = {};
        console.out.clear();
        return parseCompareOptions(arguments, request, console);
    }

    void expectRefused(const std::vector<const char*>& arguments, const std::string& message) {
        EXPECT_FALSE(parse(arguments));
        EXPECT_EQ(console.out, message + "\n");
    }

    CompareRequest request;
    CollectingConsole console;
};

TEST_F(CompareOptions, TwoFiles) {
    ASSERT_TRUE(parse({"old", "new"}));
    EXPECT_EQ(request.oldFile, "old");
    EXPECT_EQ(request.newFile, "new");
    EXPECT_FALSE(request.verbose);
    EXPECT_EQ(console.out, "");
}

TEST_F(CompareOptions, VerboseInAnyPlaceAndFurtherFilesIgnored) {
    ASSERT_TRUE(parse({"old", "-v", "new", "third"}));
    EXPECT_EQ(request.oldFile, "old");
    EXPECT_EQ(request.newFile, "new");
    EXPECT_TRUE(request.verbose);
}

TEST_F(CompareOptions, OtherWordsAreFiles) {
    ASSERT_TRUE(parse({"-z", "-V"}));
    EXPECT_EQ(request.oldFile, "-z");
    EXPECT_EQ(request.newFile, "-V");
}

TEST_F(CompareOptions, VerboseTwiceIsFatal) {
    expectRefused({"old", "new", "-v", "-v"}, "Warning: Option -v cannot be used more than once.");
    expectRefused({"-v", "-v"}, "Warning: Option -v cannot be used more than once.");
}

TEST_F(CompareOptions, FilesAreMissing) {
    expectRefused({}, "Error: no valid file 1 specified.");
    expectRefused({"-v"}, "Error: no valid file 1 specified.");
    expectRefused({"old"}, "Error: no valid file 2 specified.");
}

TEST_F(CompareOptions, AnEmptyArgumentKeepsItsPlace) {
    expectRefused({"", "new"}, "Error: no valid file 1 specified.");
    expectRefused({"", "new", "third"}, "Error: no valid file 1 specified.");
    expectRefused({"old", "", "third"}, "Error: no valid file 2 specified.");
}

}  // namespace
}  // namespace quillmark
