// The tests of what this folder has for POSIX alone, so that a run on Windows names them.
#include <gtest/gtest.h>

namespace quillmark {
namespace {

TEST(FaultyCalls, AllOfThem) {
    GTEST_SKIP() << "a copy on Windows is one call of the system, which does what it does";
}

}  // namespace
}  // namespace quillmark
