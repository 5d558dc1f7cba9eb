#include "controller/rooms/ScreenSpeakers.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace controller {

namespace {

using News = ScreenSpeakers::News;
using Texts = std::vector<std::string>;

/// What an order says, in a line.
struct OrderText {
    std::string operator()(const ScreenSpeakers::Fetch& fetch) const {
        return "fetch " + fetch.sound.address;
    }
    std::string operator()(const ScreenSpeakers::Play& play) const {
        return "play " + std::to_string(play.play) + " " + play.sound.address + " at " +
               std::to_string(play.at.time_since_epoch() / std::chrono::milliseconds(1)) + ", " +
               std::to_string(static_cast<int>(play.gain * 1000));
    }
    std::string operator()(const ScreenSpeakers::Gain& gain) const {
        return "gain " + std::to_string(gain.play) + ", " +
               std::to_string(static_cast<int>(gain.gain * 1000));
    }
    std::string operator()(const ScreenSpeakers::Stop& stop) const {
        return "stop " + std::to_string(stop.play);
    }
};

} // namespace

/// Navigators 5 and 6 are loudspeakers; pages 50 and 51 are those of 5, 60 that of 6.
class ScreenSpeakersTest : public testing::Test {
protected:
    void Open(ScreenSpeakers::PageId page) {
        m_speakers.Open(NavigatorOf(page), page, [this, page](const ScreenSpeakers::Order& order) {
            m_told.push_back(std::to_string(page) + ": " + std::visit(OrderText{}, order));
        });
    }
    void Arm(ScreenSpeakers::PageId page, bool isArmed = true) {
        m_speakers.SetArmed(NavigatorOf(page), page, isArmed);
    }
    void Close(ScreenSpeakers::PageId page) { m_speakers.Close(NavigatorOf(page), page); }
    std::uint64_t Begin(std::uint32_t navigator) {
        return m_speakers.Begin(navigator, m_sound, ScreenSpeakers::Time(std::chrono::milliseconds(700)),
                                0.125, [this](News news) { m_news.push_back(news); });
    }
    static std::uint32_t NavigatorOf(ScreenSpeakers::PageId page) {
        return static_cast<std::uint32_t>(page / 10);
    }
    Texts Told() { return std::exchange(m_told, {}); }

    const ScreenSpeakers::Sound m_sound{3, "/a"};
    Texts m_told;
    std::vector<News> m_news;
    ScreenSpeakers m_speakers{{5, 6}};
};

TEST_F(ScreenSpeakersTest, APageIsHeardOnceItIsArmedAndWhyNotIsToldBefore) {
    EXPECT_EQ(m_speakers.WhyNot(5), "the page of screen 5 is not open anywhere");
    Open(50);
    EXPECT_EQ(m_speakers.WhyNot(5),
              "the page of screen 5 waits for somebody to tap on it once, before which its "
              "browser plays nothing");
    EXPECT_EQ(Begin(5), 0U);
    m_speakers.Prepare(5, m_sound);
    EXPECT_EQ(Told(), Texts());
    Arm(50);
    EXPECT_TRUE(m_speakers.IsArmed(5));
    EXPECT_FALSE(m_speakers.IsArmed(6));
    m_speakers.Prepare(5, m_sound);
    EXPECT_EQ(Begin(5), 1U);
    m_speakers.SetGain(1, 1);
    EXPECT_EQ(Told(), (Texts{"50: fetch /a", "50: play 1 /a at 700, 125", "50: gain 1, 1000"}));
    Arm(50, false);
    EXPECT_FALSE(m_speakers.IsArmed(5));
}

TEST_F(ScreenSpeakersTest, OfTwoPagesTheOneThatWasArmedLastPlaysAlone) {
    Open(50);
    Open(51);
    Arm(51);
    Arm(50);
    (void)Begin(5);
    EXPECT_EQ(Told(), Texts{"50: play 1 /a at 700, 125"});
    Close(50);
    (void)Begin(5);
    EXPECT_EQ(Told(), Texts{"51: play 2 /a at 700, 125"});
}

TEST_F(ScreenSpeakersTest, WhatBecomesOfAPlayIsTakenOfItsOwnPageAlone) {
    for (const ScreenSpeakers::PageId page : {50U, 51U, 60U})
        Open(page);
    Arm(50);
    Arm(60);
    const auto play = Begin(5);
    m_speakers.Hear(6, 60, play, News::Started);
    m_speakers.Hear(5, 51, play, News::Started);
    m_speakers.Hear(5, 50, play + 1, News::Started);
    Close(60);
    Arm(51, false);
    EXPECT_TRUE(m_news.empty());
    m_speakers.Hear(5, 50, play, News::Late);
    Arm(50, false);
    Close(50);
    EXPECT_EQ(m_news, (std::vector<News>{News::Late, News::Silenced, News::Gone}));
}

TEST_F(ScreenSpeakersTest, WhoListensIsToldOfEachPageThatComesIsArmedAndGoes) {
    Texts changes;
    m_speakers.Listen([&] { changes.push_back(m_speakers.WhyNot(5).substr(0, 21)); });
    Open(50);
    Arm(50);
    Close(50);
    Close(50);
    m_speakers.Open(7, 70, nullptr);
    EXPECT_EQ(changes, (Texts{"the page of screen 5 ", "", "the page of screen 5 "}));
    m_speakers.Listen(nullptr);
    Open(50);
}

TEST_F(ScreenSpeakersTest, AnEndedPlayFadesOutAndTellsNothingMore) {
    Open(50);
    Arm(50);
    const auto play = Begin(5);
    m_told.clear();
    m_speakers.End(play);
    m_speakers.End(play);
    m_speakers.SetGain(play, 1);
    EXPECT_EQ(Told(), Texts{"50: stop 1"});
    m_speakers.Hear(5, 50, play, News::Ended);
    Close(50);
    EXPECT_TRUE(m_news.empty());
}

TEST_F(ScreenSpeakersTest, WhoHearsThatAPageIsGoneMayEndAllThatPlaysThere) {
    Open(50);
    Arm(50);
    int gone = 0;
    std::vector<std::uint64_t> plays;
    plays.reserve(3);
    for (int count = 0; count < 3; ++count)
        plays.push_back(m_speakers.Begin(5, m_sound, {}, 1, [&](News) {
            ++gone;
            for (const auto play : plays)
                m_speakers.End(play);
        }));
    Close(50);
    EXPECT_EQ(gone, 1);
}

TEST_F(ScreenSpeakersTest, PagesOfScreensThatAreNoLoudspeakersArePassedBy) {
    Open(70);
    Arm(70);
    EXPECT_FALSE(m_speakers.IsSpeaker(7));
    EXPECT_EQ(Begin(7), 0U);
    Close(70);
}

} // namespace controller
