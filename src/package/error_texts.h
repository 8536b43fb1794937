#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace quillmark {

/// What the steps of the package builder return when they fail; 0 is success. These are the codes
/// of this program. The table of texts knows more: packages of other makes of the generator carry
/// description and layout files, too, and whoever reads a protocol looks all of them up here.
enum PackageError : int {
    kPackageOk = 0,
    kBaseDirectoryMissing = 1,
    kRemovingStagedFileFailed = 10,
    kRemovingDirectoryFailed = 11,
    kUserFileMissing = 21,        ///< the text names the file
    kCopyingUserFileFailed = 22,  ///< the text names the file
    kDeviceConfMissing = 25,
    kSigtrakMissing = 28,
    kConfigurationFileMissing = 34,
    kCopyingConfigurationFileFailed = 39,
    kArchiveNotOpened = 45,
    kStagingNotCreated = 46,
    kStagingNotEntered = 47,
    kDescriptionFilesNotCreated = 48,
    kUserFilesNotCreated = 49,
    kDeviceConfNotCreated = 50,
    kDeviceConfNotEntered = 51,
    kSigtrakNotCreated = 52,
    kVistrelNotCreated = 53,
    kDeviceConfNotLeft = 54,
    kArchiveNotMade = 60,
    kArchiveNotWritten = 62,
};

/// The numbers of the progress texts that this program prints.
enum PackageProgress : int {
    kPreparingDirectories = 0,
    kCopyingConfigurationFile = 2,
    kCopyingUserFiles = 4,
    kCreatingArchive = 7,
    kCleaningUp = 8,
    kGenerationFailed = 9,
    kFinished = 11,
};

/// The text of an error code, in which "%1" stands for a file name or directory. A code that has
/// none reads "Unhandled error code!".
std::string_view errorText(int code);

/// The text that announces a step; empty for a number that has none.
std::string_view progressText(int step);

/// Puts the arguments in the places of "%1", "%2" ... "%9" of a text. What looks like a place
/// inside an argument is left alone; so is a place without an argument.
std::string filledText(std::string_view text, std::initializer_list<std::string_view> arguments);

}  // namespace quillmark
