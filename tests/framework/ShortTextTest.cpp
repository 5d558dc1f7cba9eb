#include "framework/ShortText.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(ShortTextTest, TextsOfEveryLengthAreKept) {
    static_assert(sizeof(ShortText) == 16);
    const std::string whole = "abcdefghijklmnopqrstuvwxyz0123456789";
    for (std::size_t size = 0; size <= whole.size(); ++size)
        EXPECT_EQ(ShortText(whole.substr(0, size)).View(), whole.substr(0, size)) << size;
}

TEST(ShortTextTest, EveryByteIsKeptWhereverItStands) {
    for (const std::size_t size : {1U, 3U, 4U, 7U, 8U, 14U, 15U, 16U, 40U}) {
        for (int byte = 0; byte < 256; ++byte) {
            const std::string text(size, static_cast<char>(byte));
            EXPECT_EQ(ShortText(text).View(), text) << size << " of " << byte;
        }
    }
}

TEST(ShortTextTest, AnyTextTakesThePlaceOfAnyOther) {
    const std::string texts[] = {"", "a", "fifteen letters", "sixteen letters!", std::string(1000, 'x')};
    for (const std::string& former : texts) {
        for (const std::string& next : texts) {
            ShortText text(former);
            text.Assign(next);
            EXPECT_EQ(text.View(), next) << "in place of " << former;
        }
    }
}

TEST(ShortTextTest, ATextIsItselfAndNoOther) {
    const std::string texts[] = {"",
                                 "a",
                                 "b",
                                 std::string("a\0", 2),
                                 "fifteen letters",
                                 "fifteen Letters",
                                 "sixteen letters!",
                                 "sixteen Letters!",
                                 std::string(255, 'x')};
    for (const std::string& one : texts) {
        for (const std::string& other : texts)
            EXPECT_EQ(ShortText(one).Is(other), one == other) << one << " and " << other;
    }
}

TEST(ShortTextTest, APartOfATextTakesItsPlace) {
    for (const std::string& whole :
         {std::string("fifteen letters"), std::string("more than fifteen letters")}) {
        for (const std::size_t first : {0U, 1U, 8U}) {
            ShortText text(whole);
            text.Assign(text.View().substr(first));
            EXPECT_EQ(text.View(), whole.substr(first));
        }
    }
}

} // namespace
