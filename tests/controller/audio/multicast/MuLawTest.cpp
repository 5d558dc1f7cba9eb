#include "controller/audio/multicast/MuLaw.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

namespace controller::audio::test {

namespace {

/// G.711's table 2 as a formula: 8 segments of 16 steps, each segment twice as wide as the one before.
std::uint8_t ByTheFormula(int sample) {
    const double magnitude = std::min(std::abs(sample / 4.0), 8158.75) + 33;
    const double segment = std::floor(std::log2(magnitude)) - 5;
    const double step = std::floor(magnitude / std::exp2(segment + 1)) - 16;
    const int code = (sample < 0 ? 0x80 : 0) + static_cast<int>(segment * 16 + step);
    return static_cast<std::uint8_t>(0xff - code);
}

} // namespace

TEST(MuLawTest, EverySampleIsWrittenAsTheFormulaOfG711HasIt) {
    for (int sample = -32768; sample <= 32767; ++sample)
        ASSERT_EQ(MuLawOf(static_cast<std::int16_t>(sample)), ByTheFormula(sample)) << sample;
}

TEST(MuLawTest, TheDecisionValuesOfG711BeginTheirSegments) {
    // Of 14 bits, as the table has them; samples have 16.
    const std::pair<int, int> cases[] = {{0, 0xff},   {31, 0xef},  {95, 0xdf},   {223, 0xcf},
                                         {479, 0xbf}, {991, 0xaf}, {2015, 0x9f}, {4063, 0x8f}};
    for (const auto& [value, code] : cases) {
        EXPECT_EQ(MuLawOf(static_cast<std::int16_t>(value * 4)), code) << value;
        if (value > 0) {
            EXPECT_EQ(MuLawOf(static_cast<std::int16_t>(value * 4 - 1)), code + 1) << value;
        }
    }
    EXPECT_EQ(MuLawOf(32767), 0x80);
    EXPECT_EQ(MuLawOf(-32768), 0x00);
}

} // namespace controller::audio::test
