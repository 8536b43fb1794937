#pragma once

#include <filesystem>
#include <string>

#include "support/system.h"
#include "support/temp_dir.h"

namespace quillmark {

/// As long as it lives, temporary files of this process go into a directory of their own: runs that
/// make packages in the same second would else meet.
class TemporaryPath {
  public:
    TemporaryPath() { set(directory_.path().string()); }
    TemporaryPath(const TemporaryPath&) = delete;
    TemporaryPath& operator=(const TemporaryPath&) = delete;
    ~TemporaryPath() { set(old_); }

  private:
    static void set(const std::string& path) { setVariable(kIsWindows ? "TMP" : "TMPDIR", path); }

    std::string old_ = std::filesystem::temp_directory_path().string();
    TempDir directory_;
};

}  // namespace quillmark
