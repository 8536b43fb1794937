// The copy of POSIX, call by call.
#include "platform/copy_file_posix.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <string>

#include <gtest/gtest.h>
#include <unistd.h>

#include "support/temp_dir.h"

namespace quillmark {
namespace {

/// What happens in the calls of one kind.
struct Calls {
    std::size_t most = SIZE_MAX;  ///< bytes that one call moves
    std::size_t left = SIZE_MAX;  ///< bytes that all calls move before `error`
    int error = 0;
    bool everySecondIsInterrupted = false;
    int count = 0;
};

struct Plan {
    Calls reads;
    Calls writes;
    int closeError = 0;
};

Plan plan;  // the calls carry nothing of their own

/// Calls that do as much as a test lets them before they fail.
class FaultyCalls : public testing::Test {
  protected:
    FaultyCalls() {
        plan = Plan();
        content.resize(1000000);
        for (std::size_t i = 0; i < content.size(); ++i) {
            content[i] = static_cast<char>(i * 7 + i / 256);
        }
        writeFile(source, content);
    }

    bool copy() { return copyFile(source, target, {&readSome, &writeSome, &closeIt}); }

    TempDir dir;
    std::string source = dir.file("source");
    std::string target = dir.file("target");
    std::string content;

  private:
    /// How many bytes the next call may move, or -1.
    static ssize_t allowed(Calls& calls, std::size_t size) {
        if (++calls.count % 2 == 1 && calls.everySecondIsInterrupted) {
            errno = EINTR;
            return -1;
        }
        if (calls.left == 0) {
            errno = calls.error;
            return calls.error == 0 ? 0 : -1;
        }
        return static_cast<ssize_t>(std::min({size, calls.most, calls.left}));
    }

    static ssize_t readSome(int descriptor, void* buffer, std::size_t size) {
        ssize_t count = allowed(plan.reads, size);
        if (count > 0) {
            count = read(descriptor, buffer, static_cast<std::size_t>(count));
            plan.reads.left -= static_cast<std::size_t>(count);
        }
        return count;
    }

    static ssize_t writeSome(int descriptor, const void* buffer, std::size_t size) {
        ssize_t count = allowed(plan.writes, size);
        if (count > 0) {
            count = write(descriptor, buffer, static_cast<std::size_t>(count));
            plan.writes.left -= static_cast<std::size_t>(count);
        }
        return count;
    }

    static int closeIt(int descriptor) {
        close(descriptor);
        errno = plan.closeError;
        return plan.closeError == 0 ? 0 : -1;
    }
};

TEST_F(FaultyCalls, InterruptionsAndSmallPieces) {
    plan.reads.everySecondIsInterrupted = true;
    plan.reads.most = 33333;
    plan.writes.everySecondIsInterrupted = true;
    plan.writes.most = 1111;
    EXPECT_TRUE(copy());
    EXPECT_TRUE(readFile(target) == content);
}

TEST_F(FaultyCalls, ASourceThatBreaksOff) {
    plan.reads.left = 300000;
    plan.reads.error = EIO;
    EXPECT_FALSE(copy());
    EXPECT_TRUE(readFile(target) == content.substr(0, 300000));
}

TEST_F(FaultyCalls, ADiskThatFillsUp) {
    plan.writes.left = 300000;
    for (const int error : {ENOSPC, 0}) {  // some devices take nothing and do not say why
        plan.writes.error = error;
        EXPECT_FALSE(copy()) << error;
        EXPECT_TRUE(readFile(target) == content.substr(0, 300000)) << error;
        plan.writes.left = 300000;
    }
}

TEST_F(FaultyCalls, ATargetThatCannotBeClosed) {
    plan.closeError = EIO;
    EXPECT_FALSE(copy());
}

}  // namespace
}  // namespace quillmark
