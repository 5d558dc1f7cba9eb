#include "host/Conversion.h"

#include <gtest/gtest.h>

namespace {

using vq::ToLong;
using vq::ToString;
using vq::ToULong;

TEST(ConversionTest, DecimalNumbersAreRead) {
    EXPECT_EQ(ToULong("0"), 0U);
    EXPECT_EQ(ToULong("7"), 7U);
    EXPECT_EQ(ToULong("4294967295"), 4294967295U);
    EXPECT_EQ(ToLong("2147483647"), 2147483647);
    EXPECT_EQ(ToLong("-2147483648"), -2147483647 - 1);
}

TEST(ConversionTest, LeadingZerosDoNotMakeAnOctalNumber) {
    EXPECT_EQ(ToULong("010"), 10U);
    EXPECT_EQ(ToULong("0x10"), 0U);
    EXPECT_EQ(ToULong("00000000000000000000000000000012"), 12U);
}

TEST(ConversionTest, TextWithoutDigitsIsZero) {
    for (const char* const text : {"", " ", "abc", "-", "+", " -", "--1", "+-1", "- 1", ".5", "x12"}) {
        EXPECT_EQ(ToULong(text), 0U) << text;
        EXPECT_EQ(ToLong(text), 0) << text;
    }
}

TEST(ConversionTest, EveryLeadingBlankOfCIsSkipped) {
    EXPECT_EQ(ToULong(" \t\n\v\f\r12"), 12U);
    EXPECT_EQ(ToLong(" \t\n\v\f\r-12"), -12);
}

TEST(ConversionTest, OtherBlanksAreNone) {
    EXPECT_EQ(ToULong("\xC2\xA0"
                      "12"),
              0U);
    EXPECT_EQ(ToULong(std::string("\0"
                                  "12",
                                  3)),
              0U);
}

TEST(ConversionTest, OneSignIsAccepted) {
    EXPECT_EQ(ToULong("+12"), 12U);
    EXPECT_EQ(ToLong("+12"), 12);
    EXPECT_EQ(ToLong("-12"), -12);
}

TEST(ConversionTest, ReadingStopsAtTheFirstCharacterThatIsNoDigit) {
    EXPECT_EQ(ToULong("12abc"), 12U);
    EXPECT_EQ(ToULong("12.9"), 12U);
    EXPECT_EQ(ToULong("1 2"), 1U);
    EXPECT_EQ(ToULong("1e3"), 1U);
    EXPECT_EQ(ToULong("12\xD9\xA3"), 12U); // an Arabic digit
    EXPECT_EQ(ToLong("-12-"), -12);
}

TEST(ConversionTest, UnsignedNumbersCountModulo32BitsDownToTheLowestSignedOne) {
    EXPECT_EQ(ToULong("-1"), 4294967295U);
    EXPECT_EQ(ToULong("-2"), 4294967294U);
    EXPECT_EQ(ToULong("-2147483647"), 2147483649U);
    EXPECT_EQ(ToULong("-2147483648"), 2147483648U);
}

TEST(ConversionTest, UnsignedNumbersOutOfRangeAreTheNearestEnd) {
    EXPECT_EQ(ToULong("-2147483649"), 2147483648U);
    EXPECT_EQ(ToULong("-99999999999999999999999999"), 2147483648U);
    EXPECT_EQ(ToULong("4294967296"), 4294967295U);
    EXPECT_EQ(ToULong("4294967297"), 4294967295U);
    EXPECT_EQ(ToULong("18446744073709551617"), 4294967295U);
    EXPECT_EQ(ToULong("99999999999999999999999999"), 4294967295U);
}

TEST(ConversionTest, SignedNumbersOutOfRangeAreTheNearestEnd) {
    EXPECT_EQ(ToLong("2147483648"), 2147483647);
    EXPECT_EQ(ToLong("4294967295"), 2147483647);
    EXPECT_EQ(ToLong("-2147483649"), -2147483647 - 1);
    EXPECT_EQ(ToLong("9223372036854775807"), 2147483647);
    EXPECT_EQ(ToLong("9223372036854775808"), 2147483647);
    EXPECT_EQ(ToLong("-9223372036854775809"), -2147483647 - 1);
    EXPECT_EQ(ToLong("99999999999999999999999999"), 2147483647);
    EXPECT_EQ(ToLong("-99999999999999999999999999"), -2147483647 - 1);
}

TEST(ConversionTest, NumbersBecomeDecimalText) {
    EXPECT_EQ(ToString(0), "0");
    EXPECT_EQ(ToString(4294967295U), "4294967295");
}

TEST(ConversionTest, EveryNumberReadsBackFromItsText) {
    for (const std::uint32_t number : {0U, 1U, 9U, 10U, 2147483647U, 2147483648U, 4294967294U, 4294967295U})
        EXPECT_EQ(ToULong(ToString(number)), number);
}

} // namespace
