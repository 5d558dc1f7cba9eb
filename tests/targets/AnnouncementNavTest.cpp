#include "targets/AnnouncementNav.h"

#include "tests/support/FakeHost.h"
#include "tests/support/Lines.h"
#include "tests/support/LookUps.h"
#include "tests/support/TestMessage.h"
#include "tests/support/Xml.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

class AnnouncementNavTest : public testing::Test {
protected:
    AnnouncementNav FromXml(const std::string& text) {
        return AnnouncementNav(m_host.Helper(), m_host, *ParseXml(text)->GetRootNode());
    }
    AnnouncementNav FromMessage(const std::string& navigator) {
        return AnnouncementNav(m_host.Helper(), m_host, Message(navigator));
    }
    static TestMessage Message(const std::string& navigator) {
        return {"add_navigator", {{"navigator", navigator}}};
    }

    FakeHost m_host;
};

TEST_F(AnnouncementNavTest, IsReadFromItsElement) {
    AnnouncementNav navigator =
        FromXml("<navigator><id>5</id><room_id>12</room_id><onscreen>true</onscreen></navigator>");
    EXPECT_EQ(navigator.GetNavID(), 5U);
    EXPECT_EQ(navigator.GetRoomID(), 12U);
    EXPECT_EQ(TextOf(navigator.toXml()),
              "<navigator><id>5</id><room_id>12</room_id><onscreen>true</onscreen></navigator>");
}

TEST_F(AnnouncementNavTest, WritingAndReadingAgainGivesTheSameIdsAndFlag) {
    AnnouncementNav navigator =
        FromXml("<navigator><onscreen>1</onscreen><room_id>-1</room_id><id>9</id></navigator>");
    AnnouncementNav again(m_host.Helper(), m_host, *navigator.toXml());
    EXPECT_EQ(TextOf(again.toXml()),
              "<navigator><id>9</id><room_id>4294967295</room_id><onscreen>true</onscreen></navigator>");
}

TEST_F(AnnouncementNavTest, MissingValuesAreStoredAsZeroAndFalse) {
    const std::string empty =
        "<navigator><id>0</id><room_id>0</room_id><onscreen>false</onscreen></navigator>";
    EXPECT_EQ(TextOf(FromXml("<navigator/>").toXml()), empty);
    EXPECT_EQ(TextOf(FromMessage("<navigator/>").toXml()), empty);
}

TEST_F(AnnouncementNavTest, AnElementOfAnotherNameIsAcceptedAsANavigator) {
    EXPECT_EQ(TextOf(FromMessage("<screen><id>8</id></screen>").toXml()),
              "<navigator><id>8</id><room_id>0</room_id><onscreen>false</onscreen></navigator>");
}

TEST_F(AnnouncementNavTest, LooksTheDeviceManagerUpOnceWhenItIsMade) {
    m_host.log.ShowLookUps();
    FromXml("<navigator/>");
    EXPECT_EQ(m_host.Take(), Lines{kFindDeviceManager});
    FromMessage("<navigator/>");
    EXPECT_EQ(m_host.Take(), Lines{kFindDeviceManager});
}

TEST_F(AnnouncementNavTest, ATextThatIsNotXmlMakesNoNavigatorAndLooksNothingUp) {
    m_host.log.ShowLookUps();
    try {
        FromMessage("navigator 5");
        FAIL() << "a navigator from no XML";
    } catch (const char* text) {
        EXPECT_STREQ(text, "Unable to dom to create an announcement navigator");
    }
    EXPECT_EQ(m_host.Take(), Lines{});
}

TEST_F(AnnouncementNavTest, WhatTheMessageThrowsIsPassedOn) {
    const TestMessage message("add_navigator",
                              [](const std::string&) -> std::string { throw std::string("gone"); });
    EXPECT_THROW(AnnouncementNav(m_host.Helper(), m_host, message), std::string);
}

TEST_F(AnnouncementNavTest, DisplayVideoSendsThePopupToItsOwnIdWithFiveParametersInOrder) {
    AnnouncementNav navigator = FromXml("<navigator><id>5</id><room_id>12</room_id></navigator>");
    navigator.DisplayVideo("d.png", "Dinner", 5000, 0, 0, true);
    EXPECT_EQ(m_host.Take(),
              Lines{"IDeviceManager.SendCommandToDevice(5, SHOW_POPUP MESSAGE:STRING=Dinner "
                    "IMGURL:STRING=d.png DELAY:NUMBER=5000 SHOWOK:BOOLEAN=true SIZE:NUMBER=0, 0, 0)"});
}

TEST_F(AnnouncementNavTest, ADelayOfZeroAndNoOkButtonAreSentAllTheSame) {
    AnnouncementNav navigator = FromXml("<navigator><id>5</id></navigator>");
    navigator.DisplayVideo("", "", 0, 0, 0, false);
    EXPECT_EQ(m_host.Take(),
              Lines{"IDeviceManager.SendCommandToDevice(5, SHOW_POPUP MESSAGE:STRING= IMGURL:STRING= "
                    "DELAY:NUMBER=0 SHOWOK:BOOLEAN=false SIZE:NUMBER=0, 0, 0)"});
}

TEST_F(AnnouncementNavTest, TheDelayIsSentUnsigned) {
    AnnouncementNav navigator = FromXml("<navigator><id>5</id></navigator>");
    navigator.DisplayVideo("", "", 4294967295U, 0, 0, false);
    EXPECT_EQ(m_host.Take(),
              Lines{"IDeviceManager.SendCommandToDevice(5, SHOW_POPUP MESSAGE:STRING= IMGURL:STRING= "
                    "DELAY:NUMBER=4294967295 SHOWOK:BOOLEAN=false SIZE:NUMBER=0, 0, 0)"});
}

TEST_F(AnnouncementNavTest, WithBothIdsTheMessageIsBoundAndTheTextNotSent) {
    AnnouncementNav navigator = FromXml("<navigator><id>5</id></navigator>");
    navigator.DisplayVideo("i", "text", 1, 9, 4, true);
    EXPECT_EQ(m_host.Take(),
              Lines{"IDeviceManager.SendCommandToDevice(5, SHOW_POPUP MESSAGE:STRING@9/4 IMGURL:STRING=i "
                    "DELAY:NUMBER=1 SHOWOK:BOOLEAN=true SIZE:NUMBER=0, 0, 0)"});
}

TEST_F(AnnouncementNavTest, WithOnlyOneOfTheIdsTheTextIsSent) {
    AnnouncementNav navigator = FromXml("<navigator><id>5</id></navigator>");
    const Lines literal{
        "IDeviceManager.SendCommandToDevice(5, SHOW_POPUP MESSAGE:STRING=text IMGURL:STRING=i "
        "DELAY:NUMBER=1 SHOWOK:BOOLEAN=true SIZE:NUMBER=0, 0, 0)"};
    navigator.DisplayVideo("i", "text", 1, 9, 0, true);
    EXPECT_EQ(m_host.Take(), literal);
    navigator.DisplayVideo("i", "text", 1, 0, 4, true);
    EXPECT_EQ(m_host.Take(), literal);
}

TEST_F(AnnouncementNavTest, DismissVideoSendsHidePopupWithoutParameters) {
    AnnouncementNav navigator = FromXml("<navigator><id>5</id><room_id>12</room_id></navigator>");
    navigator.DismissVideo();
    EXPECT_EQ(m_host.Take(), Lines{"IDeviceManager.SendCommandToDevice(5, HIDE_POPUP, 0, 0)"});
}

TEST_F(AnnouncementNavTest, PopupCommandsGoOutInAnyOrderAndNumber) {
    AnnouncementNav navigator = FromXml("<navigator><id>5</id></navigator>");
    navigator.DismissVideo();
    navigator.DismissVideo();
    navigator.DisplayVideo("", "", 0, 0, 0, true);
    navigator.DismissVideo();
    EXPECT_EQ(m_host.Take().size(), 4U);
}

TEST_F(AnnouncementNavTest, AScreenThatTheHostDoesNotKnowFailsSilently) {
    AnnouncementNav navigator = FromXml("<navigator><id>404</id></navigator>");
    m_host.Take();
    navigator.DismissVideo();
    // The host has answered -1, and nobody has heard of it.
    EXPECT_EQ(m_host.Take(), Lines{"IDeviceManager.SendCommandToDevice(404, HIDE_POPUP, 0, 0)"});
}

TEST_F(AnnouncementNavTest, WithoutADeviceManagerNothingIsSent) {
    m_host.hasDeviceManager = false;
    AnnouncementNav navigator = FromXml("<navigator><id>5</id></navigator>");
    navigator.DisplayVideo("", "", 0, 0, 0, true);
    navigator.DismissVideo();
    EXPECT_EQ(m_host.Take(), Lines{});
}

TEST_F(AnnouncementNavTest, HasAVirtualDestructor) {
    EXPECT_TRUE(std::has_virtual_destructor_v<AnnouncementNav>);
}

} // namespace
