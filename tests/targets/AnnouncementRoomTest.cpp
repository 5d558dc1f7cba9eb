#include "targets/AnnouncementRoom.h"

#include "tests/support/FakeHost.h"
#include "tests/support/Lines.h"
#include "tests/support/LookUps.h"
#include "tests/support/TestMessage.h"
#include "tests/support/Xml.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

class AnnouncementRoomTest : public testing::Test {
protected:
    AnnouncementRoom FromXml(const std::string& text) {
        return AnnouncementRoom(m_host.Helper(), m_host, *ParseXml(text)->GetRootNode());
    }
    AnnouncementRoom FromMessage(const std::string& room) {
        return AnnouncementRoom(m_host.Helper(), m_host, Message(room));
    }
    static TestMessage Message(const std::string& room) { return {"add_room", {{"room", room}}}; }

    static void CallEveryOperation(AnnouncementRoom& room) {
        room.SetUpAudio();
        room.SetAudioVolume();
        room.RestoreAudioState();
        room.SetUpVideo();
        room.RestoreVideoState();
        room.CancelRestoringState();
    }

    FakeHost m_host;
};

TEST_F(AnnouncementRoomTest, IsReadFromItsElement) {
    const AnnouncementRoom room = FromXml("<room><id>12</id><volume>40</volume></room>");
    EXPECT_EQ(room.GetRoomId(), 12U);
    EXPECT_EQ(TextOf(room.toXml()), "<room><id>12</id><volume>40</volume></room>");
}

TEST_F(AnnouncementRoomTest, WritesIdBeforeVolumeWhateverTheOrderRead) {
    const AnnouncementRoom room = FromXml("<room><volume>-7</volume><id>4294967295</id></room>");
    EXPECT_EQ(TextOf(room.toXml()), "<room><id>4294967295</id><volume>-7</volume></room>");
}

TEST_F(AnnouncementRoomTest, WritingAndReadingAgainGivesTheSameIdAndVolume) {
    const AnnouncementRoom room = FromXml("<room><id>3</id><volume>-1</volume></room>");
    const AnnouncementRoom again(m_host.Helper(), m_host, *room.toXml());
    EXPECT_EQ(TextOf(again.toXml()), "<room><id>3</id><volume>-1</volume></room>");
}

TEST_F(AnnouncementRoomTest, MissingIdAndVolumeAreStoredAsZero) {
    EXPECT_EQ(TextOf(FromXml("<room/>").toXml()), "<room><id>0</id><volume>0</volume></room>");
    EXPECT_EQ(TextOf(FromMessage("<room/>").toXml()), "<room><id>0</id><volume>0</volume></room>");
}

TEST_F(AnnouncementRoomTest, AnElementOfAnotherNameIsAcceptedAsARoom) {
    EXPECT_EQ(TextOf(FromMessage("<zone><id>8</id><volume>5</volume></zone>").toXml()),
              "<room><id>8</id><volume>5</volume></room>");
    EXPECT_EQ(TextOf(FromXml("<zone><id>8</id></zone>").toXml()),
              "<room><id>8</id><volume>0</volume></room>");
}

TEST_F(AnnouncementRoomTest, LooksTheDeviceManagerUpOnceWhenItIsMade) {
    m_host.log.ShowLookUps();
    FromXml("<room><id>1</id></room>");
    EXPECT_EQ(m_host.Take(), Lines{kFindDeviceManager});
    FromMessage("<room><id>1</id></room>");
    EXPECT_EQ(m_host.Take(), Lines{kFindDeviceManager});
}

TEST_F(AnnouncementRoomTest, ATextThatIsNotXmlMakesNoRoomAndLooksNothingUp) {
    m_host.log.ShowLookUps();
    try {
        FromMessage("<room>");
        FAIL() << "a room from no XML";
    } catch (const char* text) {
        EXPECT_STREQ(text, "Unable to create announcement room");
    }
    EXPECT_EQ(m_host.Take(), Lines{});
}

TEST_F(AnnouncementRoomTest, WhatTheMessageThrowsIsPassedOn) {
    const TestMessage message("add_room",
                              [](const std::string&) -> std::string { throw std::string("gone"); });
    EXPECT_THROW(AnnouncementRoom(m_host.Helper(), m_host, message), std::string);
}

TEST_F(AnnouncementRoomTest, ModifyRoomRewritesIdAndVolume) {
    AnnouncementRoom room = FromXml("<room><id>1</id><volume>2</volume></room>");
    EXPECT_TRUE(room.ModifyRoom(Message("<room><id>7</id><volume>8</volume></room>")));
    EXPECT_EQ(room.GetRoomId(), 7U);
    EXPECT_EQ(TextOf(room.toXml()), "<room><id>7</id><volume>8</volume></room>");
}

TEST_F(AnnouncementRoomTest, ModifyRoomWithoutXmlFailsAndChangesNothing) {
    AnnouncementRoom room = FromXml("<room><id>1</id><volume>2</volume></room>");
    EXPECT_FALSE(room.ModifyRoom(Message("room 7")));
    EXPECT_FALSE(room.fromCmdMessage(TestMessage("modify_room")));
    EXPECT_EQ(TextOf(room.toXml()), "<room><id>1</id><volume>2</volume></room>");
}

TEST_F(AnnouncementRoomTest, EachOperationLooksTheRoomUpAnewAndCallsItsNamesake) {
    AnnouncementRoom room = FromXml("<room><id>12</id><volume>40</volume></room>");
    m_host.Take();
    m_host.log.ShowLookUps();
    CallEveryOperation(room);
    const std::string lookUp =
        "IDeviceManager.GetDeviceInterface(12, {258A9CD0-5596-4c89-BBD4-C7489BA8494B})";
    EXPECT_EQ(m_host.Take(),
              (Lines{lookUp, "IRoomProxy.SetUpAudio(12)", lookUp, "IRoomProxy.SetAudioVolume(12, 40)", lookUp,
                     "IRoomProxy.RestoreAudioState(12)", lookUp, "IRoomProxy.SetUpVideo(12)", lookUp,
                     "IRoomProxy.RestoreVideoState(12)", lookUp, "IRoomProxy.CancelRestoringState(12)"}));
}

TEST_F(AnnouncementRoomTest, AVolumeOfZeroOrMinusOneIsNotSetAndTheRoomNotLookedUpForIt) {
    m_host.log.ShowLookUps();
    for (const char* const volume : {"0", "-1", "", "-1.5"}) {
        AnnouncementRoom room =
            FromXml(std::string("<room><id>1</id><volume>") + volume + "</volume></room>");
        m_host.Take();
        room.SetAudioVolume();
        EXPECT_EQ(m_host.Take(), Lines{}) << volume;
    }
}

TEST_F(AnnouncementRoomTest, EveryOtherVolumeIsSetAsAnUnsignedNumber) {
    const auto volumeSent = [this](const std::string& volume) {
        AnnouncementRoom room = FromXml("<room><id>1</id><volume>" + volume + "</volume></room>");
        m_host.Take();
        room.SetAudioVolume();
        return m_host.Take();
    };
    EXPECT_EQ(volumeSent("1"), Lines{"IRoomProxy.SetAudioVolume(1, 1)"});
    EXPECT_EQ(volumeSent("-2"), Lines{"IRoomProxy.SetAudioVolume(1, 4294967294)"});
    EXPECT_EQ(volumeSent("4294967295"), Lines{"IRoomProxy.SetAudioVolume(1, 2147483647)"});
    EXPECT_EQ(volumeSent("-9999999999"), Lines{"IRoomProxy.SetAudioVolume(1, 2147483648)"});
}

TEST_F(AnnouncementRoomTest, ARoomThatTheHostDoesNotKnowIsSkippedSilently) {
    AnnouncementRoom room = FromXml("<room><id>12</id><volume>40</volume></room>");
    m_host.devices.knownRooms = {13};
    m_host.Take();
    CallEveryOperation(room);
    EXPECT_EQ(m_host.Take(), Lines{});
}

TEST_F(AnnouncementRoomTest, WithoutADeviceManagerNothingIsDone) {
    m_host.hasDeviceManager = false;
    AnnouncementRoom room = FromXml("<room><id>12</id><volume>40</volume></room>");
    m_host.hasDeviceManager = true;
    m_host.Take();
    m_host.log.ShowLookUps();
    CallEveryOperation(room);
    EXPECT_EQ(m_host.Take(), Lines{});
}

TEST_F(AnnouncementRoomTest, ADeviceManagerFoundOnceGoesOnWorking) {
    AnnouncementRoom room = FromXml("<room><id>12</id></room>");
    m_host.hasDeviceManager = false;
    room.SetUpAudio();
    EXPECT_EQ(m_host.Take(), Lines{"IRoomProxy.SetUpAudio(12)"});
}

TEST_F(AnnouncementRoomTest, HasAVirtualDestructor) {
    EXPECT_TRUE(std::has_virtual_destructor_v<AnnouncementRoom>);
}

} // namespace
