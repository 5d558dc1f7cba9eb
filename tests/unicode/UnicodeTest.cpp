#include "unicode/Unicode.h"

#include <gtest/gtest.h>

namespace unicode {
namespace {

TEST(UnicodeTest, TextsThatDifferInSmallAndCapitalLettersAreTheSameFolded) {
    const std::pair<std::string, std::string> pairs[] = {{"FRÜHSTÜCK", "Frühstück"}, {"STRASSE", "Straße"},
                                                         {"ΟΔΌΣ", "οδός"},           {"ЗВОНОК", "звонок"},
                                                         {"Dinner 7!", "dINNER 7!"}, {"", ""}};
    for (const auto& [one, other] : pairs)
        EXPECT_EQ(Folded(one), Folded(other)) << one;
    EXPECT_EQ(Folded("Dinner"), "dinner");
}

TEST(UnicodeTest, AnAccentIsTheSameHoweverItIsCoded) {
    EXPECT_EQ(Folded("Fru\xCC\x88hstu\xCC\x88"
                     "ck"),
              Folded("FRÜHSTÜCK"));
}

TEST(UnicodeTest, OtherLettersStayDifferent) {
    EXPECT_NE(Folded("Frühstück"), Folded("Fruhstuck"));
    EXPECT_NE(Folded("Küche 1"), Folded("Küche 2"));
}

TEST(UnicodeTest, WithoutMarksTheLettersStay) {
    EXPECT_EQ(WithoutMarks("Frühstück à la carte"), "Fruhstuck a la carte");
    EXPECT_EQ(WithoutMarks("Fru\xCC\x88hstu\xCC\x88"
                           "ck"),
              "Fruhstuck");
    EXPECT_EQ(WithoutMarks("Straße"), "Straße");
}

TEST(UnicodeTest, WhatIsNotUtf8StaysAsItIs) {
    for (const std::string text : {"\xFF", "A\xC3", "\xED\xA0\x80X"}) {
        EXPECT_EQ(Folded(text), text);
        EXPECT_EQ(WithoutMarks(text), text);
    }
    const std::string zero("A\0B", 3);
    EXPECT_EQ(Folded(zero), std::string("a\0b", 3));
}

} // namespace
} // namespace unicode
