#include "controller/state/TextEdit.h"

#include <gtest/gtest.h>

#include <tuple>

namespace controller {

namespace {

std::tuple<std::int64_t, std::int64_t, std::string> Between(const std::string& before,
                                                            const std::string& after) {
    const TextEdit edit = TextEdit::Between(before, after);
    std::string applied = before;
    EXPECT_TRUE(edit.Apply(applied));
    EXPECT_EQ(applied, after);
    return {edit.place, edit.removed, edit.added};
}

} // namespace

TEST(TextEditTest, HoldsWhatDiffersAndNoMore) {
    EXPECT_EQ(Between("", ""), std::tuple(0, 0, ""));
    EXPECT_EQ(Between("abcd", "abcd"), std::tuple(4, 0, ""));
    EXPECT_EQ(Between("abcd", "abXd"), std::tuple(2, 1, "X"));
    EXPECT_EQ(Between("abcd", "ad"), std::tuple(1, 2, ""));
    EXPECT_EQ(Between("ad", "abcd"), std::tuple(1, 0, "bc"));
    EXPECT_EQ(Between("", "new"), std::tuple(0, 0, "new"));
    EXPECT_EQ(Between("old", ""), std::tuple(0, 3, ""));
    EXPECT_EQ(Between("aaa", "aa"), std::tuple(2, 1, ""));
    EXPECT_EQ(Between("aa", "aaa"), std::tuple(2, 0, "a"));
}

TEST(TextEditTest, WhatIsNotInTheTextIsNotDone) {
    for (const TextEdit& edit : {TextEdit{4, 0, "x"}, TextEdit{0, 4, "x"}, TextEdit{2, 2, "x"},
                                 TextEdit{-1, 1, "x"}, TextEdit{1, -1, "x"}, TextEdit{1, INT64_MAX, "x"}}) {
        std::string text = "abc";
        EXPECT_FALSE(edit.Apply(text));
        EXPECT_EQ(text, "abc");
    }
}

} // namespace controller
