#include "platform/time_zone.h"

#include <cstdint>
#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

#include "support/system.h"

namespace quillmark {
namespace {

constexpr std::int64_t kSummer = 1496318709;  // 2017-06-01T12:05:09 UTC
constexpr std::int64_t kWinter = 1512129909;  // 2017-12-01T12:05:09 UTC

/// Another time zone in the environment, as long as it lives.
class ZoneVariable {
  public:
    explicit ZoneVariable(const std::string& value) { setVariable("TZ", value); }
    ZoneVariable(const ZoneVariable&) = delete;
    ZoneVariable& operator=(const ZoneVariable&) = delete;
    ~ZoneVariable() {
        if (hasOld_) {
            setVariable("TZ", old_);
        } else {
            unsetVariable("TZ");
        }
    }

  private:
    const bool hasOld_ = std::getenv("TZ") != nullptr;
    const std::string old_ = hasOld_ ? std::getenv("TZ") : "";
};

TEST(TimeZone, IsTheOneOfTheSystem) {
    const std::int32_t summer = utcOffsetAt(kSummer);
    const std::int32_t winter = utcOffsetAt(kWinter);
    for (const std::int32_t offset : {summer, winter}) {
        EXPECT_EQ(offset % 900, 0);
        EXPECT_LE(std::abs(offset), 14 * 3600);
    }
    if (kIsWindows) {
        // There only the settings of the system count.
        const ZoneVariable elsewhere("XYZ-5:45");
        EXPECT_EQ(utcOffsetAt(kSummer), summer);
        EXPECT_EQ(utcOffsetAt(kWinter), winter);
    } else {
        const ZoneVariable elsewhere("XYZ-5:45");
        EXPECT_EQ(utcOffsetAt(kSummer), 20700);
        EXPECT_EQ(utcOffsetAt(kWinter), 20700);
    }
    EXPECT_EQ(utcOffsetAt(kSummer), summer);
}

TEST(TimeZone, DiffersWithTheSeason) {
    if (kIsWindows) {
        GTEST_SKIP() << "a process cannot choose its time zone";
    }
    const ZoneVariable berlin("CET-1CEST,M3.5.0,M10.5.0/3");
    EXPECT_EQ(utcOffsetAt(kSummer), 7200);
    EXPECT_EQ(utcOffsetAt(kWinter), 3600);
    const ZoneVariable west("XYZ3:30");
    EXPECT_EQ(utcOffsetAt(kSummer), -12600);
}

}  // namespace
}  // namespace quillmark
