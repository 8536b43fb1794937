#pragma once

#include <string>
#include <vector>

namespace quillmark {

/// A file that waits in the staging tree to be packed.
struct StagedFile {
    std::string path;       ///< where it is
    std::string entryName;  ///< its name in the package: the path inside the tree, with slashes
};

/// Packs files into a tar archive (pax restricted: plain tar headers unless a name or size needs
/// more). `compression` is 1 for gzip, 2 for bzip2; anything else leaves the archive as it is.
///
/// The archive grows under another name in the directory of `archivePath` and takes its place when
/// it is complete, so that whatever has that name before is lost only to a whole archive; a
/// symbolic link keeps pointing to the file that is replaced. Where that is not possible (a
/// directory without write permission, a device, a pipe), what has that name is opened and written.
///
/// Returns kPackageOk, or kArchiveNotMade without an archive writer, kArchiveNotOpened when there
/// cannot be a file of that name, kArchiveNotWritten when a file could not be read or written to
/// its end; nothing of the archive is left then, if its directory allows to remove it.
int createArchive(const std::string& archivePath, const std::vector<StagedFile>& files,
                  int compression);

}  // namespace quillmark
