#include "package/error_texts.h"

#include <string>

#include <gtest/gtest.h>

namespace quillmark {
namespace {

TEST(ErrorTexts, StandAsTheyAre) {
    EXPECT_EQ(errorText(0), "Everything is OK");
    EXPECT_EQ(errorText(1), "Target does not exist!");
    EXPECT_EQ(errorText(4), "Moving up one level in the directory failed (clean up i %1)");
    EXPECT_EQ(errorText(21), "Database file \"%1\" does not exist!");
    EXPECT_EQ(errorText(22), "Copying database file \"%1\" failed!");
    EXPECT_EQ(errorText(28),
              " Moving up one level at DEVCONF SIGTRAK files directory failed! (at copying cfg)");
    EXPECT_EQ(errorText(29), "Directory 'vistrel' does not exist! (at coyping vtl file)");
    EXPECT_EQ(errorText(31), "Directory 'descriptionfiles' does not exist! (at archiving");
    EXPECT_EQ(errorText(32), "Directory 'descriptionfiles' does not exist! (at cleanup");
    EXPECT_EQ(errorText(45), "File could not be written");
    EXPECT_EQ(errorText(51), "No access/write permission DEVCONF files directory ! ");
    EXPECT_EQ(errorText(52), "Creation of temp DEVCONF SIGTRAK files directory failed! ");
    EXPECT_EQ(errorText(53), "Creation of temp VISTREL files directory ! ");
    EXPECT_EQ(errorText(62), "Writing tar file failed!");
    EXPECT_EQ(errorText(67), "Error opening file");
}

TEST(ErrorTexts, NumberedTexts) {
    struct Series {
        int first;
        int firstNumeral;
        int count;
        std::string before;
    };
    const std::string numerals[] = {"i", "ii", "iii", "iv", "v", "vi", "vii", "viii", "ix", "x"};
    for (const Series& series :
         {Series{5, 1, 4, "Moving up one level in the directory failed (clean up "},
          Series{10, 0, 10, "Cleanup of temp directory failed! ("},
          Series{56, 0, 4, "Moving up one level in the directory failed ("}}) {
        for (int i = 0; i < series.count; ++i) {
            EXPECT_EQ(errorText(series.first + i),
                      series.before + numerals[series.firstNumeral + i] + ")");
        }
    }
}

TEST(ErrorTexts, GapsInTheTable) {
    for (const int code : {-1, 2, 3, 9, 33, 38, 61, 63, 64, 65, 66, 68, 1000}) {
        EXPECT_EQ(errorText(code), "Unhandled error code!") << code;
    }
    int known = 0;
    for (int code = 0; code <= 67; ++code) {
        known += errorText(code) == "Unhandled error code!" ? 0 : 1;
    }
    EXPECT_EQ(known, 58);
}

TEST(ProgressTexts, OnePerStep) {
    EXPECT_EQ(progressText(0), "Preparing structure of target directory...");
    EXPECT_EQ(progressText(1), "Copying database files to target directory...");
    EXPECT_EQ(progressText(2), "Copying configuration file to target directory...");
    EXPECT_EQ(progressText(3), "Copying Vistrel file to target directory...");
    EXPECT_EQ(progressText(4), "Copying user files to target directory...");
    EXPECT_EQ(progressText(5), "Preparing structure file...");
    EXPECT_EQ(progressText(6), "Generating structure file...");
    EXPECT_EQ(progressText(7), "Creating archive file...");
    EXPECT_EQ(progressText(8), "Cleaning up temporary files...");
    EXPECT_EQ(progressText(9), "Generation of zpkc failed!");
    EXPECT_EQ(progressText(10), "Cleanup of zpkc generation failed");
    EXPECT_EQ(progressText(11), "Finished successfully");
    EXPECT_EQ(progressText(12), "");
    EXPECT_EQ(progressText(-1), "");
}

TEST(FilledText, ArgumentsAreNotFilledAgain) {
    EXPECT_EQ(filledText("%1 to %2", {"a%2", "b"}), "a%2 to b");
    EXPECT_EQ(filledText("100% of %1%", {"x"}), "100% of x%");
    EXPECT_EQ(filledText("%1 %2", {"x"}), "x %2");
}

}  // namespace
}  // namespace quillmark
