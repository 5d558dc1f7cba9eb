#include "controller/audio/pulse/Ducking.h"

#include "controller/audio/pulse/DuckedVolume.h"
#include "tests/controller/support/FakeScheduler.h"
#include "tests/controller/support/TestLog.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

namespace controller::audio::test {

namespace {

constexpr std::uint32_t kFull = 65536;
constexpr std::uint32_t kDucked = 36854; ///< 15 dB below: 56 % of the cubic scale
constexpr std::uint32_t kSink = 1;
constexpr std::uint32_t kOtherSink = 2;

/// A server that takes volumes at once and, as servers do, remembers them by program.
class DuckingTest : public testing::Test {
protected:
    DuckingTest() {
        m_state.isThere = true;
        m_state.sinks = {{"kitchen", kSink}, {"bath", kOtherSink}};
        m_state.defaultSink = "kitchen";
    }

    void Begin(const std::vector<Borrowed>& left = {}) {
        m_borrowings = std::make_unique<Borrowings>(
            m_scheduler, m_log.log,
            [this](const std::vector<Borrowed>& entries, const Borrowings::Done& done) {
                m_written.insert(m_written.end(), entries.begin(), entries.end());
                if (m_isDiskQuick)
                    m_scheduler.Post("disk", [done] { done(""); });
            },
            left);
        m_ducking =
            std::make_unique<Ducking>(m_scheduler, *m_borrowings,
                                      Ducking::Server{[this] { ++m_looks; },
                                                      [this](std::uint32_t index, const PulseVolume& volume) {
                                                          m_sets.emplace_back(index, volume.at(0));
                                                          Find(index).volume = volume;
                                                      }});
    }

    PulseStream& Find(std::uint32_t index) {
        for (PulseStream& stream : m_state.streams)
            if (stream.index == index)
                return stream;
        throw std::out_of_range("no stream " + std::to_string(index));
    }

    void Play(std::uint32_t index, const std::string& program, std::uint32_t volume = kFull) {
        m_state.streams.push_back({index, kSink, program, {volume, volume}, false, false});
    }
    void End(std::uint32_t index) {
        m_state.streams.erase(std::find_if(m_state.streams.begin(), m_state.streams.end(),
                                           [&](const auto& stream) { return stream.index == index; }));
    }

    /// The server says what there is, and what follows from that happens.
    void Look() {
        m_ducking->OnState(m_state);
        m_scheduler.DoPosted();
        m_scheduler.Advance(std::chrono::milliseconds(200));
        m_ducking->OnState(m_state);
        m_scheduler.DoPosted();
    }

    std::uint32_t VolumeOf(std::uint32_t index) { return Find(index).volume.at(0); }
    std::size_t Entries() { return m_borrowings->Of("pulse").size(); }
    unsigned Hold(const std::string& sink = "kitchen", double decibels = -15) {
        return m_ducking->Hold(sink, decibels, [this] { ++m_told; });
    }

    FakeScheduler m_scheduler;
    TestLog m_log;
    bool m_isDiskQuick = true;
    int m_looks = 0;
    int m_told = 0; ///< how many were told that all is lowered
    PulseState m_state;
    std::vector<Borrowed> m_written;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> m_sets;
    std::unique_ptr<Borrowings> m_borrowings;
    std::unique_ptr<Ducking> m_ducking;
};

TEST_F(DuckingTest, MusicIsLoweredByFifteenDecibelsInFiveStepsOfTwentyMillisecondsAndRaisedLikewise) {
    Begin();
    Play(7, "music");
    const unsigned hold = Hold();
    EXPECT_EQ(m_looks, 1);
    m_ducking->OnState(m_state);
    EXPECT_TRUE(m_sets.empty()) << "before the disk has it";
    ASSERT_EQ(m_written.size(), 1U);
    EXPECT_EQ(m_written[0], (Borrowed{"pulse", "7 music", "volume", "65536 65536", "36854 36854"}));
    m_scheduler.DoPosted();
    for (std::size_t step = 1; step <= 5; ++step) {
        EXPECT_EQ(m_sets.size(), step);
        m_scheduler.Advance(std::chrono::milliseconds(20));
    }
    const std::vector<std::pair<std::uint32_t, std::uint32_t>> down{
        {7, 58409}, {7, 52057}, {7, 46396}, {7, 41350}, {7, kDucked}};
    EXPECT_EQ(m_sets, down);
    m_sets.clear();
    m_ducking->Release(hold);
    EXPECT_EQ(m_looks, 2) << "what its user has done meanwhile is looked at first";
    EXPECT_TRUE(m_sets.empty());
    Look();
    const std::vector<std::pair<std::uint32_t, std::uint32_t>> up{
        {7, 41350}, {7, 46396}, {7, 52057}, {7, 58409}, {7, kFull}};
    EXPECT_EQ(m_sets, up);
    EXPECT_EQ(Entries(), 0U);
    EXPECT_EQ(m_written.size(), 2U);
    EXPECT_EQ(m_scheduler.Waiting(), 0U);
}

TEST_F(DuckingTest, ARoomIsToldOnceWhenTheServerHasHadTimeForTheLastStep) {
    Begin();
    Play(7, "music");
    (void)Hold();
    m_ducking->OnState(m_state);
    EXPECT_EQ(m_told, 0) << "it is being written down";
    m_scheduler.DoPosted();
    m_scheduler.Advance(std::chrono::milliseconds(99));
    EXPECT_EQ(VolumeOf(7), kDucked);
    EXPECT_EQ(m_told, 0);
    m_scheduler.Advance(std::chrono::milliseconds(1));
    EXPECT_EQ(m_told, 1);
    Look();
    EXPECT_EQ(m_told, 1);
    (void)Hold();
    m_ducking->OnState(m_state);
    EXPECT_EQ(m_told, 2) << "all is lowered already";
}

TEST_F(DuckingTest, ARoomIsToldAtOnceWhereNothingCanBeLowered) {
    Begin();
    (void)Hold();
    EXPECT_EQ(m_told, 0) << "the server has not said what plays";
    m_ducking->OnState(m_state);
    EXPECT_EQ(m_told, 1);
    (void)Hold();
    m_ducking->OnState({});
    EXPECT_EQ(m_told, 2) << "there is no server";
    m_isDiskQuick = false;
    Play(7, "music");
    const unsigned hold = Hold();
    m_ducking->OnState(m_state);
    m_ducking->Release(hold);
    m_scheduler.Advance(std::chrono::seconds(1));
    EXPECT_EQ(m_told, 2) << "that one is gone";
}

TEST_F(DuckingTest, WhatPlaysElsewhereIsOursIsPausedOrMutedIsLeft) {
    Begin();
    Play(1, "elsewhere");
    Find(1).sink = kOtherSink;
    Play(2, "ours");
    Find(2).isOurs = true;
    Play(3, "paused");
    Find(3).isPaused = true;
    Play(4, "silent", 0);
    (void)Hold();
    Look();
    EXPECT_TRUE(m_sets.empty());
    EXPECT_EQ(Entries(), 0U);
    Find(3).isPaused = false;
    Look();
    EXPECT_EQ(VolumeOf(3), kDucked) << "once it goes on it is lowered too";
}

TEST_F(DuckingTest, WhatBeginsMeanwhileIsLoweredTooAndAllIsRaised) {
    Begin();
    Play(1, "music");
    const unsigned hold = Hold("default");
    Look();
    Play(2, "film", 30000);
    Look();
    EXPECT_EQ(VolumeOf(1), kDucked);
    EXPECT_EQ(VolumeOf(2), 16870U);
    m_ducking->Release(hold);
    Look();
    EXPECT_EQ(VolumeOf(1), kFull);
    EXPECT_EQ(VolumeOf(2), 30000U);
    EXPECT_EQ(Entries(), 0U);
}

TEST_F(DuckingTest, AVolumeThatItsUserSetsMeanwhileIsLeftAndNotLoweredAgain) {
    Begin();
    Play(1, "music");
    Play(2, "film");
    const unsigned hold = Hold();
    Look();
    Find(1).volume = {50000, 50000};
    m_sets.clear();
    Look();
    EXPECT_TRUE(m_sets.empty());
    m_ducking->Release(hold);
    Look();
    EXPECT_EQ(VolumeOf(1), 50000U);
    EXPECT_EQ(VolumeOf(2), kFull);
    EXPECT_EQ(Entries(), 0U);
    (void)Hold();
    Look();
    EXPECT_EQ(VolumeOf(1), 28117U) << "the next announcement lowers it as any other";
}

TEST_F(DuckingTest, AVolumeThatItsUserSetsWhileItIsRaisedIsLoweredForTheNextAnnouncement) {
    Begin();
    Play(7, "music");
    const unsigned hold = Hold();
    Look();
    m_ducking->Release(hold);
    m_ducking->OnState(m_state);
    Find(7).volume = {20000, 20000};
    m_ducking->OnState(m_state);
    const unsigned next = Hold();
    Look();
    EXPECT_EQ(VolumeOf(7), 11247U) << "15 dB below what its user has set";
    m_ducking->Release(next);
    Look();
    EXPECT_EQ(VolumeOf(7), 20000U);
    EXPECT_EQ(Entries(), 0U);
}

TEST_F(DuckingTest, AProgramsNextStreamThatGetsTheLoweredVolumeGoesBackToItsOwn) {
    Begin();
    Play(1, "music");
    const unsigned hold = Hold();
    Look();
    End(1);
    Look();
    EXPECT_EQ(Entries(), 1U) << "the server remembers the lowered volume";
    Play(2, "music", kDucked);
    Look();
    EXPECT_EQ(VolumeOf(2), kDucked) << "it is not lowered twice";
    m_ducking->Release(hold);
    Look();
    EXPECT_EQ(VolumeOf(2), kFull);
    EXPECT_EQ(Entries(), 0U);
}

TEST_F(DuckingTest, AProgramThatComesBackAfterTheAnnouncementGetsItsVolumeBack) {
    Begin();
    Play(1, "music");
    const unsigned hold = Hold();
    Look();
    End(1);
    m_ducking->Release(hold);
    Look();
    EXPECT_EQ(Entries(), 1U);
    Play(9, "music", kDucked);
    Look();
    EXPECT_EQ(VolumeOf(9), kFull);
    EXPECT_EQ(Entries(), 0U);
}

TEST_F(DuckingTest, WhatAFormerRunLeftIsRaisedAtTheStartWhereItIsStillOurs) {
    Play(1, "music", kDucked);
    Play(2, "film", 50000);
    Play(3, "game", 46396);
    const std::string before = "65536 65536";
    const std::string set = "36854 36854";
    Begin({{"pulse", "1 music", "volume", before, set},
           {"pulse", "2 film", "volume", before, set},
           {"pulse", "3 game", "volume", before, set},
           {"pulse", "4 gone", "volume", before, set}});
    EXPECT_EQ(m_looks, 1);
    Look();
    EXPECT_EQ(VolumeOf(1), kFull);
    EXPECT_EQ(VolumeOf(2), 50000U) << "set by its user since";
    EXPECT_EQ(VolumeOf(3), kFull) << "left on the way";
    EXPECT_EQ(Entries(), 1U) << "what is gone may come back";
    EXPECT_EQ(m_borrowings->Of("pulse").at(0).thing, "4 gone");
}

TEST_F(DuckingTest, AServerThatIsGoneIsLookedForAsLongAsSomethingIsOwed) {
    Begin();
    Play(1, "music");
    const unsigned hold = Hold();
    Look();
    m_ducking->OnState({});
    m_ducking->Release(hold);
    m_ducking->OnState({});
    const int looks = m_looks;
    m_scheduler.Advance(std::chrono::seconds(1));
    EXPECT_EQ(m_looks, looks + 1);
    End(1);
    Play(0, "music", kDucked);
    Look();
    EXPECT_EQ(VolumeOf(0), kFull);
    m_ducking->OnState({});
    EXPECT_EQ(m_scheduler.Waiting(), 0U) << "nothing is owed";
}

TEST_F(DuckingTest, TheNextAnnouncementThatComesWhileItIsRaisedKeepsTheFirstVolume) {
    Begin();
    Play(1, "music");
    const unsigned first = Hold();
    Look();
    m_ducking->Release(first);
    m_ducking->OnState(m_state);
    m_scheduler.Advance(std::chrono::milliseconds(20));
    const unsigned second = Hold();
    Look();
    EXPECT_EQ(VolumeOf(1), kDucked);
    m_ducking->Release(second);
    Look();
    EXPECT_EQ(VolumeOf(1), kFull);
    EXPECT_EQ(Entries(), 0U);
}

TEST_F(DuckingTest, TwoRoomsOnOneSinkLowerItOnceAndTheLastOneRaisesIt) {
    Begin();
    Play(1, "music");
    const unsigned first = Hold();
    const unsigned second = Hold();
    Look();
    EXPECT_EQ(VolumeOf(1), kDucked);
    m_ducking->Release(first);
    Look();
    EXPECT_EQ(VolumeOf(1), kDucked);
    m_ducking->Release(second);
    Look();
    EXPECT_EQ(VolumeOf(1), kFull);
}

TEST_F(DuckingTest, TheEndRaisesEverythingAtOnce) {
    Begin();
    Play(1, "music");
    (void)Hold();
    Look();
    m_ducking = nullptr;
    EXPECT_EQ(VolumeOf(1), kFull);
    EXPECT_EQ(Entries(), 0U);
}

TEST_F(DuckingTest, AServerThatCountsInOtherUnitsIsStillKnownAgain) {
    Begin();
    Play(1, "music");
    const unsigned hold = Hold();
    Look();
    Find(1).volume = {kDucked + 20, kDucked - 20};
    m_ducking->Release(hold);
    Look();
    EXPECT_EQ(VolumeOf(1), kFull);
}

} // namespace

} // namespace controller::audio::test
