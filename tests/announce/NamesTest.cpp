#include "announce/house/Names.h"

#include "announce/Failure.h"

#include <gtest/gtest.h>

namespace {

const std::vector<names::Named> kRooms{
    {"1", "Kitchen"}, {"2", "Garden"}, {"3", "garden"}, {"4", "7"}, {"7", "Hall"}};

Failure FailureOf(const std::string& wanted, const std::vector<names::Named>& all = kRooms) {
    try {
        (void)names::Find(all, wanted, "room");
    } catch (const Failure& failure) {
        return failure;
    }
    return {ExitStatus::Done, "nothing was wrong"};
}

} // namespace

TEST(NamesTest, FoundById) {
    EXPECT_EQ(names::Find(kRooms, "2", "room"), 1U);
}

TEST(NamesTest, AnIdGoesBeforeANameOfTheSameDigits) {
    EXPECT_EQ(names::Find(kRooms, "7", "room"), 4U);
}

TEST(NamesTest, FoundByNameInSmallAndCapitalLetters) {
    EXPECT_EQ(names::Find(kRooms, "kitchen", "room"), 0U);
    EXPECT_EQ(names::Find(kRooms, "HALL", "room"), 4U);
}

TEST(NamesTest, OfNamesThatDifferInTheirLettersTheExactOneIsMeant) {
    EXPECT_EQ(names::Find(kRooms, "garden", "room"), 2U);
    EXPECT_EQ(names::Find(kRooms, "Garden", "room"), 1U);
}

TEST(NamesTest, AmbiguousNameIsRefusedWithTheCandidates) {
    const Failure failure = FailureOf("GARDEN");
    EXPECT_EQ(failure.Status(), ExitStatus::Ambiguous);
    EXPECT_STREQ(failure.what(), "several rooms are called \"GARDEN\"");
    EXPECT_EQ(failure.Right(), "an id: Garden (2) or garden (3)");
}

TEST(NamesTest, MistypedNameIsRefusedWithTheNearest) {
    for (const char* typed : {"Kitchn", "Kicthen", "itchen", "Kittchen"}) {
        const Failure failure = FailureOf(typed);
        EXPECT_EQ(failure.Status(), ExitStatus::NotFound);
        EXPECT_EQ(failure.Right(), "the nearest: Kitchen (1)") << typed;
    }
    EXPECT_EQ(FailureOf("Bathroom").Right(), "one of those that \"announce rooms\" shows");
    EXPECT_EQ(FailureOf("Bathroom", {}).Right(), "there is no room at all");
}

TEST(NamesTest, TheNearestComeBestFirstAndAreNotMoreThanThree) {
    EXPECT_EQ(names::Nearest({"list", "lost", "last", "lust", "edit"}, "lsit"),
              (std::vector<std::string>{"list"}));
    EXPECT_EQ(names::Nearest({"abcdef1", "abcdef", "abcdef2", "abcdef3"}, "abcdefg").front(), "abcdef1");
    EXPECT_EQ(names::Nearest({"aaa1", "aaa2", "aaa3", "aaa4"}, "aaa5").size(), 3U);
    EXPECT_EQ(names::Nearest({"volume", "text"}, "x"), std::vector<std::string>{});
}

TEST(NamesTest, ChoiceIsWrittenAsPeopleSayIt) {
    EXPECT_EQ(names::Choice({}), "");
    EXPECT_EQ(names::Choice({"a"}), "a");
    EXPECT_EQ(names::Choice({"a", "b", "c"}), "a, b or c");
}
