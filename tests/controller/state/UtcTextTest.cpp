#include "controller/state/UtcText.h"

#include <gtest/gtest.h>

namespace controller {

namespace {

using std::chrono::system_clock;

TEST(UtcTextTest, ATimeIsTheWholeSecondThatItIsInWhateverComesBehind) {
    const auto at = [](std::int64_t milliseconds) {
        return system_clock::time_point(std::chrono::milliseconds(milliseconds));
    };
    EXPECT_EQ(UtcText(at(0)), "1970-01-01T00:00:00Z");
    EXPECT_EQ(UtcText(at(1772389800999)), "2026-03-01T18:30:00Z");
    EXPECT_EQ(UtcText(at(-1)), "1969-12-31T23:59:59Z");
}

} // namespace

} // namespace controller
