#include "controller/audio/multicast/Decimator.h"

#include "controller/audio/SoundFormat.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace controller::audio::test {

namespace {

/// The largest of what a tone of full scale in both channels becomes.
double LevelOf(double frequency, int factor) {
    const Decimator decimator(factor);
    std::vector<float> out(1000);
    std::vector<float> in;
    const auto frames = static_cast<std::int64_t>(out.size()) * factor + 2 * decimator.Reach();
    for (std::int64_t frame = 0; frame < frames; ++frame)
        in.insert(in.end(), 2,
                  static_cast<float>(std::sin(2 * M_PI * frequency * static_cast<double>(frame) / kRate)));
    decimator.Run(in, out);
    return std::abs(*std::max_element(
        out.begin(), out.end(), [](float one, float other) { return std::abs(one) < std::abs(other); }));
}

} // namespace

TEST(DecimatorTest, KeepsWhatTheLowerRateCanHoldAndNothingElse) {
    for (const int factor : {2, 6}) {
        const double half = kRate / 2.0 / factor;
        for (const double share : {0.05, 0.3, 0.7, 0.84})
            EXPECT_NEAR(LevelOf(half * share, factor), 1.0, 0.01) << factor << ", " << share;
        for (const double share : {1.01, 1.3, 1.9})
            EXPECT_LT(LevelOf(half * share, factor), 0.002) << factor << ", " << share;
    }
}

TEST(DecimatorTest, ASampleStandsWhereItStoodAndHasBothChannels) {
    const Decimator decimator(6);
    std::vector<float> in(static_cast<std::size_t>(600 + 2 * decimator.Reach()) * kChannels);
    in[static_cast<std::size_t>(decimator.Reach() + 300) * kChannels] = 1.0F;
    std::vector<float> out(100);
    decimator.Run(in, out);
    const auto largest = std::max_element(out.begin(), out.end());
    EXPECT_EQ(largest - out.begin(), 50);
    // A stroke of one frame in one of two channels, spread over a sample.
    EXPECT_NEAR(*largest, 0.5 * 2 * 0.462 / 6, 0.002);
}

} // namespace controller::audio::test
