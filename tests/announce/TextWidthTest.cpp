#include "announce/basics/TextWidth.h"

#include <gtest/gtest.h>

TEST(TextWidthTest, EastAsianCharactersAndEmojiAreTwoCellsWideAndAccentsNone) {
    EXPECT_EQ(text::Width("Dinner"), 6U);
    EXPECT_EQ(text::Width("Küche"), 5U);
    EXPECT_EQ(text::Width("e\xCC\x81"), 1U); // an accent on its own
    EXPECT_EQ(text::Width("夕食"), 4U);
    EXPECT_EQ(text::Width("🔔"), 2U);
    EXPECT_EQ(text::Width(""), 0U);
}

TEST(TextWidthTest, LongTextIsCutBetweenCharactersAndNeverWiderThanAllowed) {
    EXPECT_EQ(text::Shortened("Dinner", 6), "Dinner");
    EXPECT_EQ(text::Shortened("Dinner", 4), "Din…");
    EXPECT_EQ(text::Shortened("夕食です", 4), "夕…");
    EXPECT_EQ(text::Shortened("夕食です", 5), "夕食…");
    EXPECT_EQ(text::Shortened("Dinner", 1), "…");
    EXPECT_EQ(text::Shortened("Dinner", 0), "");
}

TEST(TextWidthTest, PaddingCountsCellsAndNotBytes) {
    EXPECT_EQ(text::PaddedRight("夕食", 6), "夕食  ");
    EXPECT_EQ(text::PaddedLeft("ü", 3), "  ü");
    EXPECT_EQ(text::PaddedRight("Dinner", 3), "Dinner");
}

TEST(TextWidthTest, NothingThatATerminalWouldObeyIsLeft) {
    EXPECT_EQ(text::Visible("a\nb\tc"), "a b c");
    EXPECT_EQ(text::Visible("\x1b[2J"), "\xEF\xBF\xBD[2J");
    EXPECT_EQ(text::Visible("\xC2\x9B"), "\xEF\xBF\xBD");             // C1
    EXPECT_EQ(text::Visible("\xE2\x80\xAE"), "\xEF\xBF\xBD");         // turns the direction
    EXPECT_EQ(text::Visible("\xFF\xC3"), "\xEF\xBF\xBD\xEF\xBF\xBD"); // no UTF-8
    EXPECT_EQ(text::Visible("Küche 🔔"), "Küche 🔔");
}

TEST(TextWidthTest, LinesAreMadeVisibleEachOnItsOwn) {
    EXPECT_EQ(text::VisibleLines("one\n  two\x7F\n\nfour\r\n"), "one\n  two\xEF\xBF\xBD\n\nfour \n");
    EXPECT_EQ(text::VisibleLines("\xC2\x9B"), "\xEF\xBF\xBD");
    EXPECT_EQ(text::VisibleLines(""), "");
}

TEST(TextWidthTest, OverlongFormsSurrogatesAndWhatIsCutShortAreNoUtf8) {
    EXPECT_TRUE(text::IsUtf8("Küche 夕食 🔔"));
    for (const char* wrong :
         {"\xC0\x80", "\xE0\x80\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xC3", "\x80", "\xF5\x80\x80\x80"})
        EXPECT_FALSE(text::IsUtf8(wrong));
}
