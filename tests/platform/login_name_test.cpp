#include "platform/login_name.h"

#include <cstdlib>

#include <gtest/gtest.h>

#include "support/system.h"

namespace quillmark {
namespace {

TEST(LoginName, IsTheRealUsersName) {
    EXPECT_EQ(loginName(), systemLoginName());
}

TEST(LoginName, EnvironmentDecidesNothing) {
    const std::string before = loginName();
    for (const char* const name : {"USER", "LOGNAME", "USERNAME"}) {
        setVariable(name, "somebody");
    }
    EXPECT_EQ(loginName(), before);
}

TEST(LoginNameDeathTest, EmptyForAnUnknownUser) {
    if (kIsWindows) {
        GTEST_SKIP() << "on Windows nobody becomes a user whom the system does not know";
    }
    // Only a privileged user can become another one; anybody else has nothing to check here.
    EXPECT_EXIT(std::_Exit(!becomeUnknownUser() || loginName().empty() ? 0 : 1),
                testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace quillmark
