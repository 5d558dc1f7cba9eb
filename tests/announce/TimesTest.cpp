#include "announce/basics/Times.h"

#include "announce/basics/Failure.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

TEST(TimesTest, LengthsAreReadWithTheirUnit) {
    EXPECT_EQ(times::ReadMilliseconds("it", "500ms"), 500U);
    EXPECT_EQ(times::ReadMilliseconds("it", "1.5s"), 1500U);
    EXPECT_EQ(times::ReadMilliseconds("it", "2 min"), 120000U);
    EXPECT_EQ(times::ReadMilliseconds("it", "0"), 0U);
    EXPECT_EQ(times::ReadMilliseconds("it", "4294967295ms"), 4294967295U);
}

TEST(TimesTest, WhatIsNoLengthIsRefusedByItsName) {
    for (const char* text :
         {"", "5", "-5s", "s", "5h", "1.2.3s", ".", "4294967296ms", "1e9s", "5 s x", "nan", "nanms", "inf",
          "infs", "-0.6ms", "-0s", "0x1s", " 5s", "99999999999999999999999999999s"}) {
        SCOPED_TRACE(text);
        try {
            (void)times::ReadMilliseconds("--popup-time", text);
            FAIL() << "it was taken";
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.Status(), ExitStatus::Usage);
            EXPECT_EQ(std::string(failure.what()).rfind("--popup-time: ", 0), 0U);
        }
    }
}

TEST(TimesTest, WhatIsWrittenIsReadAsTheSame) {
    for (const std::uint32_t length :
         {0U, 1U, 999U, 1000U, 1234U, 5000U, 59999U, 60000U, 90000U, 4294967295U})
        EXPECT_EQ(times::ReadMilliseconds("it", times::LengthText(length)), length)
            << times::LengthText(length);
    EXPECT_EQ(times::LengthText(1500), "1.5 s");
    EXPECT_EQ(times::LengthText(120000), "2 min");
}

TEST(TimesTest, TimesAreShownInTheZoneOfTheUser) {
    ASSERT_EQ(setenv("TZ", "TEST-2", 1), 0);
    tzset();
    EXPECT_EQ(times::LocalText("2026-03-01T23:30:00.250Z"), "2026-03-02 01:30:00");
    EXPECT_EQ(times::LocalClock("2026-03-01T23:30:00Z"), "01:30:00");
    EXPECT_EQ(times::LocalText("nonsense"), "nonsense");
    ASSERT_EQ(unsetenv("TZ"), 0);
    tzset();
}
