#include "platform/login_name.h"

#include <cstdlib>

#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

namespace quillmark {
namespace {

// No distribution gives this number to anybody.
constexpr uid_t kNobodysId = 1876543210;

TEST(LoginName, IsTheRealUsersName) {
    const passwd* entry = getpwuid(getuid());
    EXPECT_EQ(loginName(), entry == nullptr ? "" : entry->pw_name);
}

TEST(LoginName, EnvironmentDecidesNothing) {
    const std::string before = loginName();
    setenv("USER", "somebody", 1);
    setenv("LOGNAME", "somebody", 1);
    EXPECT_EQ(loginName(), before);
}

TEST(LoginNameDeathTest, EmptyForAnUnknownUser) {
    // Only a privileged user can become another one; anybody else has nothing to check here.
    EXPECT_EXIT(
        {
            const bool unknown = setuid(kNobodysId) == 0;
            std::_Exit(!unknown || loginName().empty() ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace quillmark
