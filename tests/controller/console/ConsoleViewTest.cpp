#include "controller/console/ConsoleView.h"

#include <gtest/gtest.h>

#include <utility>

namespace controller {

namespace {

using Texts = std::vector<std::string>;

class ConsoleViewTest : public testing::Test {
protected:
    static House MakeHouse() {
        House house;
        house.rooms.push_back({12, "Kitchen", {"silent", ""}});
        house.rooms.push_back({13, "Hall", {"silent", ""}});
        house.navigators.push_back({5, "Tablet", 12});
        return house;
    }

    const House m_house = MakeHouse();
    EventFeed m_feed;
    Texts m_lines;
    ConsoleView m_view{m_house, m_feed,
                       [](std::uint32_t id) { return id == 3 ? std::string("Dinner") : std::string(); },
                       [this](const std::string& line) {
                           m_lines.push_back(line);
                       }};
};

TEST_F(ConsoleViewTest, APlayingIsToldByTheNamesOfTheHouse) {
    m_feed.Publish(events::AnnouncementStarted{3});
    m_feed.Publish(events::RoomSetUp{12, 40});
    m_feed.Publish(events::RoomSetUp{13, 30});
    m_feed.Publish(events::SoundStarted{"/media/announcements/gong.wav"});
    m_feed.Publish(events::SoundEnded{"/media/announcements/gong.wav", ""});
    m_feed.Publish(events::RoomRestored{12, 40, false});
    m_feed.Publish(events::RoomRestored{13, 55, true});
    m_feed.Publish(events::AnnouncementEnded{3});

    EXPECT_EQ(m_lines, (Texts{"Announcement 3 (Dinner) begins", "Playing gong.wav in Kitchen, Hall",
                              "gong.wav was played to its end", "Kitchen is back at volume 40",
                              "Hall stays at volume 55", "Announcement 3 (Dinner) is over"}));
}

TEST_F(ConsoleViewTest, ARoomThatCannotBeHeardIsToldAndWhenItCanBeAgain) {
    using events::RoomHealth;
    m_feed.Publish(events::RoomHealthChanged{13, RoomHealth::Healthy, ""});
    m_feed.Publish(events::RoomHealthChanged{12, RoomHealth::Silent, "no sound device"});
    m_feed.Publish(events::RoomHealthChanged{12, RoomHealth::Healthy, ""});
    m_feed.Publish(events::RoomHealthChanged{13, RoomHealth::Silent, ""});

    EXPECT_EQ(m_lines, (Texts{"Kitchen cannot be heard: no sound device", "Kitchen can be heard again"}));
}

TEST_F(ConsoleViewTest, ASoundThatCannotBePlayedIsToldWithItsReason) {
    m_feed.Publish(events::SoundEnded{"/media/announcements/x.wav", "there is no such file"});
    EXPECT_EQ(m_lines, Texts{"x.wav could not be played: there is no such file"});
}

TEST_F(ConsoleViewTest, ASoundThatWasMadeForTheAnnouncementIsNotToldByItsFile) {
    m_feed.Publish(events::SoundStarted{"/media/announcements/.speech-da4db7b0.wav"});
    m_feed.Publish(events::SoundEnded{"/media/announcements/.speech-da4db7b0.wav", ""});

    EXPECT_EQ(m_lines, (Texts{"Playing its sound in ", "its sound was played to its end"}));
}

TEST_F(ConsoleViewTest, PopupsAreToldWithWhatTheyShow) {
    m_feed.Publish(events::PopupShown{1, 5, "Dinner", "table.png", std::chrono::milliseconds(6000), true});
    m_feed.Publish(events::PopupChanged{1, 5, "Supper"});
    m_feed.Publish(events::PopupHidden{1, 5, events::PopupEnd::TimeIsUp});

    EXPECT_EQ(m_lines,
              (Texts{"Popup on Tablet: \"Dinner\", image \"table.png\" (6 s, OK button)",
                     "Popup on Tablet now says \"Supper\"", "Popup on Tablet is gone: its time is up"}));
}

TEST_F(ConsoleViewTest, NothingFromOutsideSteersTheTerminal) {
    m_feed.Publish(events::PopupChanged{1, 5, "a\nb\x1B[2J\x7F\xC2\x9B"});
    m_feed.Publish(events::SoundEnded{"/media/announcements/\xC2\x9B"
                                      "2J.wav",
                                      "no \x9B"});
    EXPECT_EQ(m_lines,
              (Texts{"Popup on Tablet now says \"a b [2J  \"", " 2J.wav could not be played: no ?"}));
}

TEST_F(ConsoleViewTest, WhatTheHouseDoesNotNameIsToldByItsId) {
    m_feed.Publish(events::AnnouncementStarted{4});
    m_feed.Publish(events::RoomRestored{99, 10, false});
    EXPECT_EQ(m_lines, (Texts{"Announcement 4 begins", "room 99 is back at volume 10"}));
}

TEST_F(ConsoleViewTest, TheRestIsTheLogsBusiness) {
    m_feed.Publish(events::StateSaved{});
    m_feed.Publish(events::LogLine{Severity::Error, "trouble"});
    m_feed.Publish(events::VariableChanged{9, 4, "warm"});
    EXPECT_EQ(m_lines, Texts{});
}

} // namespace

} // namespace controller
