#pragma once

#include <initializer_list>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "package/archive.h"
#include "platform/console.h"

namespace quillmark {

/// The staging tree of one package: a private directory in which the files are gathered under the
/// names that they have in the package.
///
///     descriptionfiles/       stays empty here, as does vistrel
///     userfiles/
///     deviceconf/sigtrak/     the include file
///     deviceconf/vistrel/
///
/// Every step reports what it did and returns a PackageError. Nothing is taken back after a
/// failure, so that the tree shows how far the run came; only cleanUp removes it.
class cZpkcCommon {
  public:
    explicit cZpkcCommon(Console& console) : console_(console) {}

    /// Makes the tree in a directory of the given name below an existing one. Only the owner can
    /// enter it. There must be nothing of that name.
    int createStagingTree(const std::string& baseDir, const std::string& name);

    /// Copies the files into "userfiles", each under the prefix and its own name. A second file of
    /// the same name replaces the first one. After a failure failedFile() is the one that it is
    /// about.
    int copyUserFiles(const std::vector<std::string>& files, std::string_view prefix);

    /// Copies the logger's configuration into "sigtrak", under its own name or as "sigtrak.cfg".
    int copyConfigurationFile(const std::string& file, bool keepName);

    /// Removes the staged files and the directories of the tree.
    int cleanUp();

    /// What was staged, in order, each path once.
    const std::vector<StagedFile>& stagedFiles() const { return staged_; }

    /// Name of the user file that could not be staged, as given.
    const std::string& failedFile() const { return failedFile_; }

  private:
    int createSubdirectories() const;
    bool stage(const std::string& file, const std::string& entryName);
    bool isStaged(const std::string& entryName) const;
    void report(std::string_view text, std::initializer_list<std::string_view> arguments);
    std::string pathOf(std::string_view entryName) const;

    Console& console_;
    std::string stagingDir_;  ///< absolute
    std::vector<StagedFile> staged_;
    std::set<std::string> entryNames_;  ///< of all of them
    std::string failedFile_;
};

}  // namespace quillmark
