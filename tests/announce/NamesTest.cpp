#include "announce/house/Names.h"

#include "announce/basics/Failure.h"

#include <gtest/gtest.h>

namespace {

const std::vector<names::Named> kRooms{
    {"1", "Kitchen"}, {"2", "Garden"}, {"3", "garden"}, {"4", "7"}, {"7", "Hall"}};

Failure FailureToFind(const std::string& wanted, const std::vector<names::Named>& all = kRooms) {
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

TEST(NamesTest, SmallAndCapitalLettersAreTheSameInEveryLanguage) {
    const std::vector<names::Named> rooms{{"1", "Frühstück"}, {"2", "Große Straße"}, {"3", "Столовая"}};
    EXPECT_EQ(names::Find(rooms, "FRÜHSTÜCK", "room"), 0U);
    EXPECT_EQ(names::Find(rooms,
                          "fru\xCC\x88hstu\xCC\x88"
                          "ck",
                          "room"),
              0U);
    EXPECT_EQ(names::Find(rooms, "GROSSE STRASSE", "room"), 1U);
    EXPECT_EQ(names::Find(rooms, "столовая", "room"), 2U);
    EXPECT_EQ(FailureToFind("FRÜHSTUK", rooms).Right(), "the nearest: Frühstück (1)");
}

TEST(NamesTest, OfNamesThatDifferInTheirLettersTheExactOneIsMeant) {
    EXPECT_EQ(names::Find(kRooms, "garden", "room"), 2U);
    EXPECT_EQ(names::Find(kRooms, "Garden", "room"), 1U);
}

TEST(NamesTest, AmbiguousNameIsRefusedWithTheCandidates) {
    const Failure failure = FailureToFind("GARDEN");
    EXPECT_EQ(failure.Status(), ExitStatus::Ambiguous);
    EXPECT_STREQ(failure.what(), "several rooms are called \"GARDEN\"");
    EXPECT_EQ(failure.Right(), "an id: Garden (2) or garden (3)");
}

TEST(NamesTest, MistypedNameIsRefusedWithTheNearest) {
    for (const char* typed : {"Kitchn", "Kicthen", "itchen", "Kittchen"}) {
        const Failure failure = FailureToFind(typed);
        EXPECT_EQ(failure.Status(), ExitStatus::NotFound);
        EXPECT_EQ(failure.Right(), "the nearest: Kitchen (1)") << typed;
    }
    EXPECT_EQ(FailureToFind("Bathroom").Right(), "one of those that \"announce rooms\" shows");
    EXPECT_EQ(FailureToFind("Bathroom", {}).Right(), "there is no room at all");
}
