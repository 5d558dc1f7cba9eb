#include "controller/audio/VolumeLaw.h"

#include <gtest/gtest.h>

namespace controller::audio::test {

TEST(VolumeLawTest, IsTheCubeOfTheShare) {
    EXPECT_EQ(Gain(0), 0.0);
    EXPECT_EQ(Gain(100), 1.0);
    EXPECT_DOUBLE_EQ(Gain(50), 0.125);
    EXPECT_DOUBLE_EQ(Gain(10), 0.001);
    EXPECT_DOUBLE_EQ(Gain(80), 0.512);
}

TEST(VolumeLawTest, MoreThanTheScaleIsTheFullVolume) {
    EXPECT_EQ(Gain(101), 1.0);
    EXPECT_EQ(Gain(4'294'967'295U), 1.0);
}

} // namespace controller::audio::test
