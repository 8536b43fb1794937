#pragma once

#include <sys/resource.h>
#include <unistd.h>

namespace quillmark {

/// As long as it lives, the system lets nobody open a file, whoever asks: there are too many
/// already.
class TooManyFiles {
  public:
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

}  // namespace quillmark
