#include "announce/announcements/Targets.h"

#include "tests/announce/SmallHouse.h"

#include <gtest/gtest.h>

using targets::Texts;

namespace {

class TargetsTest : public testing::Test {
protected:
    Json ReadRoom(const std::string& text) {
        return targets::Read(m_rooms, targets::TakenApart(m_rooms, text, m_small.house), m_small.house);
    }

    SmallHouse m_small;
    const fields::Field& m_rooms = fields::Named("rooms");
    const fields::Field& m_screens = fields::Named("screens");
};

} // namespace

TEST_F(TargetsTest, ARoomStandsWithItsVolumeOrStaysAsLoudAsItIs) {
    EXPECT_EQ(ReadRoom("kitchen:40"), (Json{{"id", 1}, {"volume", 40}}));
    EXPECT_EQ(ReadRoom("1"), (Json{{"id", 1}, {"volume", -1}}));
}

TEST_F(TargetsTest, ANameMayHaveAColonOfItsOwn) {
    EXPECT_EQ(ReadRoom("hall: left"), (Json{{"id", 2}, {"volume", -1}}));
    EXPECT_EQ(ReadRoom("Hall: left:7"), (Json{{"id", 2}, {"volume", 7}}));
}

TEST_F(TargetsTest, AVolumeIsAWholeNumberUpToAHundred) {
    for (const char* text : {"Kitchen:", "Kitchen:101", "Kitchen:-1", "Kitchen:loud"}) {
        const Failure failure = FailureOf([&] { (void)ReadRoom(text); });
        EXPECT_EQ(failure.Status(), ExitStatus::Usage) << text;
        EXPECT_EQ(std::string(failure.what()).rfind("the volume of room Kitchen: ", 0), 0U) << failure.what();
        EXPECT_EQ(failure.Right(), "a whole number from 0 to 100");
    }
}

TEST_F(TargetsTest, AScreenComesWithItsRoomAndHasNoVolume) {
    EXPECT_EQ(targets::Read(m_screens, {{"screen", "Television"}}, m_small.house),
              (Json{{"id", 12}, {"room", 2}, {"onscreen", true}}));
    const Failure failure = FailureOf([&] {
        (void)targets::Read(m_screens, {{"screen", "Tablet"}, {"volume", "5"}}, m_small.house);
    });
    EXPECT_EQ(failure.Reason(), "there is no key \"volume\" here; right: screen");
}

TEST_F(TargetsTest, AnItemIsWrittenByItsNameWhenThatIsTheOnlyOneAndByItsIdElse) {
    EXPECT_EQ(targets::Write(m_rooms, {{"id", 1}, {"volume", 40}}, m_small.house),
              (Texts{{"room", "Kitchen"}, {"volume", "40"}}));
    EXPECT_EQ(targets::Write(m_rooms, {{"id", 3}, {"volume", -1}}, m_small.house), (Texts{{"room", "3"}}));
    EXPECT_EQ(targets::Write(m_screens, {{"id", 77}}, m_small.house), (Texts{{"screen", "77"}}));
}

TEST_F(TargetsTest, PutIntoReplacesTheOneThatIsThereAndTakeOutNeedsIt) {
    Json items = Json::array({{{"id", 1}, {"volume", 40}}});
    targets::PutInto(items, {{"id", 1}, {"volume", 50}});
    targets::PutInto(items, {{"id", 2}, {"volume", -1}});
    EXPECT_EQ(targets::Phrase(m_rooms, items, m_small.house), "Kitchen 50, Hall: left");

    targets::TakeOut(m_rooms, items, "Kitchen", m_small.house);
    EXPECT_EQ(items, Json::array({{{"id", 2}, {"volume", -1}}}));
    const Failure failure = FailureOf([&] { targets::TakeOut(m_rooms, items, "Kitchen", m_small.house); });
    EXPECT_EQ(failure.Status(), ExitStatus::NotFound);
    EXPECT_STREQ(failure.what(), "the announcement has no room \"Kitchen\"");
}
