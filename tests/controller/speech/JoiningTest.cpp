#include "controller/speech/Joining.h"

#include <gtest/gtest.h>

namespace controller {

namespace {

using wave::Samples;

Samples Sound(std::size_t before, std::size_t heard, std::size_t behind) {
    Samples samples(before, 50);
    samples.resize(before + heard, 8000);
    samples.resize(before + heard + behind, -50);
    return samples;
}

TEST(JoiningTest, OfTheSilenceAtBothEndsABreathIsLeft) {
    EXPECT_EQ(joining::Trimmed(Sound(20000, 1000, 20000)), Sound(480, 1000, 1920));
    EXPECT_EQ(joining::Trimmed(Sound(3, 1000, 4)), Sound(3, 1000, 4));
    EXPECT_EQ(joining::Trimmed(Sound(0, 1, 0)), Sound(0, 1, 0));
}

TEST(JoiningTest, OfSilenceAloneNothingIsLeft) {
    EXPECT_EQ(joining::Trimmed(Sound(20000, 0, 20000)), Samples());
    EXPECT_EQ(joining::Trimmed({}), Samples());
}

TEST(JoiningTest, SilenceInTheMiddleStays) {
    Samples samples = Sound(0, 1000, 0);
    samples.resize(50000);
    const Samples end = Sound(0, 1000, 0);
    samples.insert(samples.end(), end.begin(), end.end());
    EXPECT_EQ(joining::Trimmed(samples), samples);
}

TEST(JoiningTest, BetweenChimeAndSpeechAre300Milliseconds) {
    Samples expected = Sound(0, 10, 0);
    expected.resize(10 + 14400);
    const Samples speech = Sound(1, 5, 1);
    expected.insert(expected.end(), speech.begin(), speech.end());
    EXPECT_EQ(joining::Joined(Sound(0, 10, 0), speech), expected);
    EXPECT_EQ(joining::Joined({}, speech), speech);
}

} // namespace

} // namespace controller
