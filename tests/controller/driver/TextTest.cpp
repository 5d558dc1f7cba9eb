#include "controller/driver/Text.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace controller {

namespace {

TEST(TextTest, ANumberIsTheWholeTextAndInItsRange) {
    EXPECT_EQ(ReadNumber<std::uint32_t>("4294967295", 1, 0xffffffff), 4294967295U);
    EXPECT_EQ(ReadNumber<std::uint32_t>("007", 0, 100), 7U);
    for (const char* text :
         {"", "0", "-1", "+1", "4294967296", "99999999999999999999", "1x", " 1", "1.0", "1 "})
        EXPECT_EQ(ReadNumber<std::uint32_t>(text, 1, 0xffffffff), std::nullopt) << text;
    EXPECT_EQ(ReadNumber<unsigned>("101", 0, 100), std::nullopt);
}

TEST(TextTest, LettersBecomeSmallAndEverythingElseStays) {
    EXPECT_EQ(Lower("Content-TYPE: AZaz [@`{] \xC3\x84"), "content-type: azaz [@`{] \xC3\x84");
}

} // namespace

} // namespace controller
