#pragma once

#include <string_view>

#ifdef _WIN32
#include <filesystem>
#include <fstream>

#include "support/temp_dir.h"
#else
#include <sys/resource.h>
#include <unistd.h>
#endif

namespace quillmark {

#ifdef _WIN32

/// Windows has no limit that could be set.
class TooManyFiles {
  public:
    static constexpr bool kIsPossible = false;
    static constexpr std::string_view kWhyNot = "Windows has no limit of open files";

    ~TooManyFiles() {}
};

/// Windows refuses everybody to write what is marked as read-only. Wine leaves it to the system
/// below, which refuses the superuser nothing.
class OrdinaryUser {
  public:
    ~OrdinaryUser() {}

    static bool isOrdinary() {
        using std::filesystem::perms;
        const TempDir directory;
        const std::string name = directory.file("read-only");
        writeFile(name, "");
        std::filesystem::permissions(name, perms::owner_read);
        const bool isRefused = !std::ofstream(name, std::ios::app).is_open();
        std::filesystem::permissions(name, perms::owner_read | perms::owner_write);
        return isRefused;
    }
};

#else

/// As long as it lives, the system lets nobody open a file, whoever asks: there are too many
/// already.
class TooManyFiles {
  public:
    static constexpr bool kIsPossible = true;
    static constexpr std::string_view kWhyNot = "";

    TooManyFiles() {
        getrlimit(RLIMIT_NOFILE, &old_);
        rlimit none = old_;
        none.rlim_cur = 0;
        setrlimit(RLIMIT_NOFILE, &none);
    }
    TooManyFiles(const TooManyFiles&) = delete;
    TooManyFiles& operator=(const TooManyFiles&) = delete;
    ~TooManyFiles() { setrlimit(RLIMIT_NOFILE, &old_); }

  private:
    rlimit old_{};
};

/// As long as it lives, the process is nobody if it was the superuser, to whom nothing is refused.
class OrdinaryUser {
  public:
    OrdinaryUser() {
        if (old_ == 0) {
            changed_ = seteuid(kNobody) == 0;
        }
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;
    ~OrdinaryUser() {
        if (changed_) {
            changed_ = seteuid(old_) != 0;
        }
    }

    /// False where the superuser cannot become anybody else.
    bool isOrdinary() const { return old_ != 0 || changed_; }

  private:
    static constexpr uid_t kNobody = 65534;

    uid_t old_ = geteuid();
    bool changed_ = false;
};

#endif

}  // namespace quillmark
