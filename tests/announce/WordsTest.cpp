#include "announce/basics/Words.h"

#include <gtest/gtest.h>

TEST(WordsTest, TheNearestComeBestFirstAndAreNotMoreThanThree) {
    EXPECT_EQ(words::Nearest({"list", "lost", "last", "lust", "edit"}, "lsit"),
              (std::vector<std::string>{"list"}));
    EXPECT_EQ(words::Nearest({"abcdef1", "abcdef", "abcdef2", "abcdef3"}, "abcdefg").front(), "abcdef1");
    EXPECT_EQ(words::Nearest({"aaa1", "aaa2", "aaa3", "aaa4"}, "aaa5").size(), 3U);
    EXPECT_EQ(words::Nearest({"volume", "text"}, "x"), std::vector<std::string>{});
}

TEST(WordsTest, ChoiceIsWrittenAsPeopleSayIt) {
    EXPECT_EQ(words::Choice({}), "");
    EXPECT_EQ(words::Choice({"a"}), "a");
    EXPECT_EQ(words::Choice({"a", "b", "c"}), "a, b or c");
}

TEST(WordsTest, AListIsWhatIsSaidOfEach) {
    const auto doubled = [](const std::string& one) {
        return one + one;
    };
    EXPECT_EQ(words::Listed(std::vector<std::string>{"a", "b"}, doubled), "aa, bb");
    EXPECT_EQ(words::Listed(std::vector<std::string>{}, doubled), "");
}
