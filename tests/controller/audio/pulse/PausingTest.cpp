#include "controller/audio/pulse/Pausing.h"

#include "tests/controller/support/FakeScheduler.h"
#include "tests/controller/support/TestLog.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace controller::audio::test {

namespace {

using Texts = std::vector<std::string>;

/// Players that answer when the test says so.
class PausingTest : public testing::Test {
protected:
    void Begin(const std::vector<Borrowed>& left = {}) {
        m_borrowings = std::make_unique<Borrowings>(
            m_scheduler, m_log.log,
            [this](const std::vector<Borrowed>& entries, const Borrowings::Done& done) {
                for (const Borrowed& entry : entries)
                    m_done.push_back((entry.set.empty() ? "strike " : "write ") + entry.thing);
                done("");
            },
            left);
        Pausing::Players players;
        players.list = [this](const std::function<void(const Pausing::Names&)>& answer) {
            m_scheduler.Post("list", [this, answer] { answer(m_playing); });
        };
        players.pause = [this](const Pausing::Names& names, std::function<void()> done) {
            Do("pause", names, std::move(done));
        };
        players.play = [this](const Pausing::Names& names, std::function<void()> done) {
            Do("play", names, std::move(done));
        };
        m_pausing = std::make_unique<Pausing>(*m_borrowings, players);
    }

    void Do(const char* what, const Pausing::Names& names, std::function<void()> done) {
        for (const std::string& name : names)
            m_done.push_back(std::string(what).append(" ").append(name));
        m_scheduler.Post("players", std::move(done));
    }

    Texts TakeDone() { return std::exchange(m_done, {}); }

    FakeScheduler m_scheduler;
    TestLog m_log;
    Pausing::Names m_playing{"org.mpris.MediaPlayer2.book"};
    Texts m_done;
    std::unique_ptr<Borrowings> m_borrowings;
    std::unique_ptr<Pausing> m_pausing;
    const std::string m_book = m_playing.front();
};

TEST_F(PausingTest, WhatPlaysIsWrittenDownPausedAndPlayedAgainWhenTheLastAnnouncementLetsGo) {
    Begin();
    EXPECT_TRUE(m_pausing->HasGivenBack());
    m_pausing->Hold();
    m_pausing->Hold();
    m_scheduler.DoPosted();
    EXPECT_EQ(TakeDone(), (Texts{"write " + m_book, "pause " + m_book}));
    EXPECT_FALSE(m_pausing->HasGivenBack());
    m_pausing->Release();
    m_scheduler.DoPosted();
    EXPECT_EQ(TakeDone(), Texts{});
    m_pausing->Release();
    m_scheduler.DoPosted();
    EXPECT_EQ(TakeDone(), (Texts{"play " + m_book, "strike " + m_book}));
    EXPECT_TRUE(m_pausing->HasGivenBack());
}

TEST_F(PausingTest, WhereNothingPlaysNothingIsPaused) {
    m_playing.clear();
    Begin();
    m_pausing->Hold();
    m_scheduler.DoPosted();
    m_pausing->Release();
    m_scheduler.DoPosted();
    EXPECT_EQ(TakeDone(), Texts{});
    EXPECT_TRUE(m_pausing->HasGivenBack());
}

TEST_F(PausingTest, AnAnnouncementThatLetsGoBeforeThePlayersAnswerLeavesNothingPaused) {
    Begin();
    m_pausing->Hold();
    m_pausing->Release();
    m_scheduler.DoPosted();
    EXPECT_EQ(TakeDone(),
              (Texts{"write " + m_book, "pause " + m_book, "play " + m_book, "strike " + m_book}));
    EXPECT_TRUE(m_pausing->HasGivenBack());
}

TEST_F(PausingTest, WhatAFormerRunHasLeftPausedIsPlayedAtTheStart) {
    Begin({{"mpris", m_book, "status", "Playing", "Paused"}});
    EXPECT_FALSE(m_pausing->HasGivenBack());
    m_scheduler.DoPosted();
    EXPECT_EQ(TakeDone(), (Texts{"play " + m_book, "strike " + m_book}));
    EXPECT_TRUE(m_borrowings->Of("mpris").empty());
    EXPECT_TRUE(m_pausing->HasGivenBack());
}

TEST_F(PausingTest, AnswersThatComeAfterTheEndDoNothing) {
    Begin();
    m_pausing->Hold();
    m_pausing = nullptr;
    m_scheduler.DoPosted();
    EXPECT_EQ(TakeDone(), Texts{});
}

} // namespace

} // namespace controller::audio::test
