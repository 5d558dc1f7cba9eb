#include "announce/house/House.h"

#include "tests/announce/SmallHouse.h"

#include <gtest/gtest.h>

TEST(HouseTest, WhatIsAskedForIsFetchedOnceAndAnnouncementsAgainWhenTheyHaveChanged) {
    SmallHouse small;
    EXPECT_EQ(small.house.FindRoom("Kitchen").at("id"), 1);
    EXPECT_EQ(small.house.RoomName(2), "Hall: left");
    EXPECT_EQ(small.house.FindAnnouncement("dinner").at("id"), 1);
    small.answers["/api/announcements"]["announcements"][0]["name"] = "Supper";
    EXPECT_EQ(small.house.AnnouncementName(1), "Dinner");
    small.house.ForgetAnnouncements();
    EXPECT_EQ(small.house.AnnouncementName(1), "Supper");
    EXPECT_EQ(small.asked,
              (std::vector<std::string>{"/api/rooms", "/api/announcements", "/api/announcements"}));
}

TEST(HouseTest, WhatTheHouseDoesNotHaveIsCalledByItsKindAndId) {
    SmallHouse small;
    EXPECT_EQ(small.house.RoomName(7), "room 7");
    EXPECT_EQ(small.house.ScreenName(7), "screen 7");
    EXPECT_EQ(small.house.AnnouncementName(7), "announcement 7");
}

TEST(HouseTest, AVariableIsFoundByNameOrByDeviceAndNumber) {
    SmallHouse small;
    EXPECT_EQ(IdOf(small.house.FindVariable("OUTSIDE")), "9/4");
    EXPECT_EQ(IdOf(small.house.FindVariable("9/5")), "9/5");
    EXPECT_EQ(IdOf(small.house.FindScreen("Tablet")), "11");
}

TEST(HouseTest, MediaAreFoundByTheirNameAndASoundWithoutItsEnding) {
    SmallHouse small;
    EXPECT_EQ(small.house.FindMedia("chime", "sound"), "chime.wav");
    EXPECT_EQ(small.house.FindMedia("door.png", "file"), "door.png");
    const Failure near = FailureOf([&] { (void)small.house.FindMedia("chim", "sound"); });
    EXPECT_EQ(near.Reason(), "there is no sound \"chim\" in the media folder; right: the nearest: chime.wav");
    const Failure far = FailureOf([&] { (void)small.house.FindMedia("x", "image"); });
    EXPECT_EQ(far.Right(),
              "one of those that \"announce media\" shows; \"announce media add\" brings new ones");
}

TEST(HouseTest, TheTypesOfEventsAreThoseThatTheControllerDescribes) {
    SmallHouse small;
    small.answers["/api/openapi.json"] = R"({"components": {"schemas": {
        "Event": {"oneOf": [{"$ref": "#/components/schemas/LogEvent"}, {"$ref": "#/components/schemas/PagesChangedEvent"}]},
        "LogEvent": {"properties": {"type": {"const": "log"}}},
        "PagesChangedEvent": {"properties": {"type": {"const": "pages_changed"}}}}}})"_json;
    EXPECT_EQ(small.house.EventTypes(), (std::vector<std::string>{"log", "pages_changed"}));
}

TEST(HouseTest, ASoundIsCalledByItsFileWhateverTheControllerSays) {
    EXPECT_EQ(SoundName("chime"), "chime.wav");
    EXPECT_EQ(SoundName("chime.wav"), "chime.wav");
    EXPECT_EQ(SoundName("/media/chime.wav"), "chime.wav");
    EXPECT_EQ(SoundName(""), "");
    EXPECT_EQ(SoundName(".speech-160cb44c"), "a spoken sound");
    EXPECT_EQ(SoundName(".test-tone"), "the test tone");
}
