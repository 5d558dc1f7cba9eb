#include "rehearsal/JsonText.h"

#include <gtest/gtest.h>

namespace {

std::string Json(std::string_view text) {
    std::string out;
    AppendJsonText(out, text);
    return out;
}

TEST(JsonTextTest, EscapesQuotesAndBackslashes) {
    EXPECT_EQ(Json(R"(a"b\c)"), R"("a\"b\\c")");
}

TEST(JsonTextTest, EscapesTheControlCharactersThatHaveALetter) {
    EXPECT_EQ(Json("\n\r\t\b\f"), R"("\n\r\t\b\f")");
}

TEST(JsonTextTest, EscapesOtherControlCharactersInLowerCase) {
    EXPECT_EQ(Json(std::string_view("\0\x01\x0B\x1F", 4)), R"("\u0000\u0001\u000b\u001f")");
}

TEST(JsonTextTest, EscapesNothingElse) {
    EXPECT_EQ(Json("/<>&'\x7F Grüße 🎵"), "\"/<>&'\x7F Grüße 🎵\"");
}

TEST(JsonTextTest, WritesNumbersInDecimal) {
    std::string out;
    AppendNumber(out, std::uint64_t{18446744073709551615U});
    AppendNumber(out, std::int64_t{-9223372036854775807} - 1);
    AppendNumber(out, std::uint32_t{0});
    EXPECT_EQ(out, "18446744073709551615-92233720368547758080");
}

TEST(JsonTextTest, CutsBetweenCharacters) {
    EXPECT_EQ(Beginning("üü", 4), "üü");
    EXPECT_EQ(Beginning("üü", 3), "ü");
    EXPECT_EQ(Beginning("üü", 1), "");
}

TEST(JsonTextTest, ShowsThatAnExcerptGoesOn) {
    EXPECT_EQ(QuotedExcerpt("short"), R"("short")");
    EXPECT_EQ(QuotedExcerpt("0123456789", 4), R"("0123…")");
}

} // namespace
