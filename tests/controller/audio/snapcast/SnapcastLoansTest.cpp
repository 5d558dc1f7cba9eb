#include "controller/audio/snapcast/SnapcastLoans.h"

#include "tests/controller/audio/snapcast/FakeSnapcastServer.h"
#include "tests/controller/support/FakeScheduler.h"
#include "tests/controller/support/TestLog.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace controller::audio::test {

namespace {

constexpr const char* kBefore = "bath=80+kitchen=100:music hall=50:radio";

} // namespace

class SnapcastLoansTest : public testing::Test {
protected:
    void Begin(const std::vector<Borrowed>& left = {}) {
        m_borrowings = std::make_unique<Borrowings>(
            m_scheduler, m_log.log,
            [this](const std::vector<Borrowed>& entries, const Borrowings::Done& done) {
                m_written.insert(m_written.end(), entries.begin(), entries.end());
                m_scheduler.Post("disk", [done] { done(""); });
            },
            left);
        m_loans =
            std::make_unique<SnapcastLoans>(m_scheduler, m_log.log, *m_borrowings, m_server, "nas:1705");
        m_server.loans = m_loans.get();
        m_scheduler.DoPosted();
    }

    /// As after a kill: what is written down is all that is known.
    void BeginAgain() {
        const auto left = m_borrowings->All();
        m_server.loans = nullptr;
        m_loans = nullptr;
        m_scheduler.DoPosted();
        Begin(left);
    }

    unsigned Hold(const std::string& client, unsigned percent = 30) {
        return m_loans->Hold({client, "announcements", percent},
                             {[this, client](const SnapcastState&) { m_said.push_back(client + " ready"); },
                              [this, client](RoomTrouble::Kind kind, const std::string& reason) {
                                  m_kind = kind;
                                  m_said.push_back(client + ": " + reason);
                              }});
    }
    void Release(unsigned hold, bool isCut = false) {
        m_loans->Release(hold, isCut);
        m_scheduler.DoPosted();
    }
    std::string HoldAndHear(const std::string& client) {
        (void)Hold(client);
        m_scheduler.DoPosted();
        return m_said.empty() ? "" : m_said.back();
    }

    std::string Model() const { return m_server.model.Text(); }
    std::size_t Left() const { return m_borrowings->All().size(); }

    FakeScheduler m_scheduler;
    TestLog m_log;
    FakeSnapcastServer m_server{m_scheduler};
    std::vector<Borrowed> m_written;
    std::unique_ptr<Borrowings> m_borrowings;
    std::unique_ptr<SnapcastLoans> m_loans;
    std::vector<std::string> m_said;
    std::optional<RoomTrouble::Kind> m_kind;
};

using Lines = std::vector<std::string>;

TEST_F(SnapcastLoansTest, AClientIsTakenOutOfAGroupWithOthersAndGetsStreamAndVolumeAndAllBackInOrder) {
    Begin();
    const unsigned hold = Hold("kitchen");
    EXPECT_TRUE(m_server.calls.empty());
    m_scheduler.DoPosted();
    EXPECT_EQ(m_said, Lines{"kitchen ready"});
    EXPECT_EQ(Model(), "bath=80:music hall=50:radio kitchen=30:announcements");
    EXPECT_EQ(m_server.calls, (Lines{"clients g-music", "stream announcements", "volume kitchen"}));
    const std::vector<Borrowed> expected{{"snapcast", "nas:1705 kitchen", "group", "g-music", "alone"},
                                         {"snapcast", "nas:1705 kitchen", "stream", "music", "announcements"},
                                         {"snapcast", "nas:1705 kitchen", "volume", "100", "30"}};
    EXPECT_EQ(m_borrowings->All(), expected);
    m_server.calls.clear();
    Release(hold);
    EXPECT_EQ(m_server.calls, (Lines{"volume kitchen", "stream music", "clients g-music"}));
    EXPECT_EQ(Model(), kBefore);
    EXPECT_EQ(Left(), 0U);
    EXPECT_EQ(m_scheduler.Waiting(), 0U);
}

TEST_F(SnapcastLoansTest, NothingIsChangedBeforeItIsWrittenDown) {
    Begin();
    (void)Hold("kitchen");
    while (m_written.empty()) {
        EXPECT_TRUE(m_server.calls.empty());
        m_scheduler.DoNextPosted();
    }
    EXPECT_EQ(m_written.size(), 3U);
    EXPECT_TRUE(m_server.calls.empty());
}

TEST_F(SnapcastLoansTest, RoomsOfOneGroupStayTogetherEachAtItsVolume) {
    Begin();
    const unsigned kitchen = Hold("kitchen", 30);
    const unsigned bath = Hold("bath", 60);
    m_scheduler.DoPosted();
    EXPECT_EQ(m_said, (Lines{"kitchen ready", "bath ready"}));
    EXPECT_EQ(Model(), "bath=60+kitchen=30:announcements hall=50:radio");
    Release(kitchen);
    EXPECT_EQ(Model(), "bath=60+kitchen=30:announcements hall=50:radio") << "the bath would lose its stream";
    Release(bath);
    EXPECT_EQ(Model(), kBefore);
    EXPECT_EQ(Left(), 0U);
}

TEST_F(SnapcastLoansTest, AGroupOfOneIsNotTakenApartAndOneThatIsMutedIsHeardMeanwhile) {
    Begin();
    m_server.model.GroupOf("hall").isMuted = true;
    m_server.model.Client("hall").volume = {50, true};
    const unsigned hold = Hold("hall");
    m_scheduler.DoPosted();
    EXPECT_EQ(Model(), "bath=80+kitchen=100:music hall=30:announcements");
    Release(hold);
    EXPECT_EQ(Model(), "bath=80+kitchen=100:music hall=50m:radio(muted)");
    EXPECT_EQ(Left(), 0U);
}

TEST_F(SnapcastLoansTest, WhatSomebodyHasSetMeanwhileIsTheirs) {
    Begin();
    const unsigned hold = Hold("kitchen");
    m_scheduler.DoPosted();
    m_server.model.SetVolume("kitchen", {70, false});
    m_server.model.SetStream(m_server.model.GroupOf("kitchen").id, "radio");
    m_server.model.SetClients("g-radio", {"hall", "kitchen"});
    Release(hold);
    EXPECT_EQ(Model(), "bath=80:music hall=50+kitchen=70:radio");
    EXPECT_EQ(Left(), 0U);
}

TEST_F(SnapcastLoansTest, AVolumeThatChangesMeanwhileIsHeardAndGivenBack) {
    Begin();
    const unsigned hold = Hold("hall");
    m_loans->SetVolume(hold, 40);
    m_scheduler.DoPosted();
    EXPECT_EQ(m_server.model.Client("hall").volume.percent, 40U);
    m_loans->SetVolume(hold, 45);
    m_loans->SetVolume(hold, 48);
    m_scheduler.DoPosted();
    EXPECT_EQ(m_server.model.Client("hall").volume.percent, 48U);
    Release(hold);
    EXPECT_EQ(Model(), kBefore);
}

TEST_F(SnapcastLoansTest, AStoppedAnnouncementLosesItsStreamFirstAndItsVolumeWhenThatIsSilent) {
    Begin();
    const unsigned hold = Hold("kitchen");
    m_scheduler.DoPosted();
    m_server.calls.clear();
    Release(hold, true);
    EXPECT_EQ(m_server.calls, Lines{"stream music"});
    m_scheduler.Advance(SnapcastLoans::kCut);
    m_scheduler.DoPosted();
    EXPECT_EQ(m_server.calls, (Lines{"stream music", "volume kitchen", "clients g-music"}));
    EXPECT_EQ(Model(), kBefore);
    EXPECT_EQ(Left(), 0U);
}

TEST_F(SnapcastLoansTest, ANewAnnouncementRightBehindKeepsWhatTheFirstHasBorrowed) {
    Begin();
    const unsigned first = Hold("kitchen");
    m_scheduler.DoPosted();
    m_loans->Release(first, false);
    const unsigned second = Hold("kitchen", 45);
    m_scheduler.DoPosted();
    EXPECT_EQ(Model(), "bath=80:music hall=50:radio kitchen=45:announcements");
    EXPECT_EQ(m_said, (Lines{"kitchen ready", "kitchen ready"}));
    Release(second);
    EXPECT_EQ(Model(), kBefore);
    EXPECT_EQ(Left(), 0U);
}

TEST_F(SnapcastLoansTest, TheNextStartGivesBackWhatAKilledRunHasLeft) {
    Begin();
    (void)Hold("kitchen");
    (void)Hold("hall");
    m_scheduler.DoPosted();
    BeginAgain();
    EXPECT_EQ(Model(), kBefore);
    EXPECT_EQ(Left(), 0U);
}

TEST_F(SnapcastLoansTest, KilledAfterAnyCallTheNextStartPutsAllBack) {
    for (std::size_t calls = 0; calls <= 3; ++calls) {
        m_server.model = {};
        m_server.calls.clear();
        Begin();
        (void)Hold("kitchen");
        while (m_scheduler.HasPosted() && m_server.calls.size() < calls)
            m_scheduler.DoNextPosted();
        BeginAgain();
        EXPECT_EQ(Model(), kBefore) << calls;
        EXPECT_EQ(Left(), 0U) << calls;
    }
}

TEST_F(SnapcastLoansTest, AServerThatComesBackWithOldStateOrOursEndsAsItWas) {
    for (const bool isOurs : {false, true}) {
        m_server.model = {};
        m_said.clear();
        Begin();
        (void)Hold("kitchen");
        m_scheduler.DoPosted();
        if (!isOurs)
            m_server.model = {};
        SnapcastState gone;
        gone.reason = "has closed the connection";
        m_server.isAnswering = false;
        m_loans->OnState(gone);
        EXPECT_EQ(m_said, (Lines{"kitchen ready",
                                 "kitchen: the Snapcast server nas:1705 has closed the connection"}));
        EXPECT_EQ(m_kind, RoomTrouble::Kind::Failed);
        m_scheduler.DoPosted();
        EXPECT_EQ(Left(), 3U);
        m_server.isAnswering = true;
        m_scheduler.Advance(SnapcastLoans::kRetry);
        m_scheduler.DoPosted();
        EXPECT_EQ(Model(), kBefore) << isOurs;
        EXPECT_EQ(Left(), 0U) << isOurs;
    }
}

TEST_F(SnapcastLoansTest, WhyARoomIsNotHeardIsSaid) {
    Begin();
    EXPECT_EQ(HoldAndHear("attic"), "attic: the Snapcast server nas:1705 knows no client \"attic\"");
    EXPECT_EQ(m_kind, RoomTrouble::Kind::Refused);
    m_server.model.Client("hall").isConnected = false;
    EXPECT_EQ(HoldAndHear("hall"),
              "hall: the client \"hall\" is not connected to the Snapcast server nas:1705");
    m_server.model.state.streams[2].format = "44100:16:2";
    EXPECT_EQ(HoldAndHear("kitchen"),
              "kitchen: the stream \"announcements\" of the Snapcast server nas:1705 is "
              "44100:16:2; it must be sampleformat=48000:16:2");
    m_server.model.state.streams[2].scheme = "pipe";
    EXPECT_EQ(HoldAndHear("kitchen"),
              "kitchen: the stream \"announcements\" of the Snapcast server nas:1705 is no "
              "tcp:// source, and nothing can be fed to it");
    m_server.model.state.streams.pop_back();
    EXPECT_EQ(HoldAndHear("kitchen"),
              "kitchen: the Snapcast server nas:1705 has no stream \"announcements\"; it needs a line in its "
              "snapserver.conf: source = tcp://0.0.0.0:4953?name=announcements");
    EXPECT_TRUE(m_server.calls.empty());
    EXPECT_EQ(Left(), 0U);
}

TEST_F(SnapcastLoansTest, AServerThatNeverAnswersIsGivenUpForThisAnnouncement) {
    Begin();
    m_server.isAnswering = false;
    EXPECT_EQ(HoldAndHear("kitchen"), "");
    m_scheduler.Advance(SnapcastLoans::kAnswer);
    EXPECT_EQ(m_said, Lines{"kitchen: the Snapcast server nas:1705 does not answer"});
    EXPECT_EQ(m_kind, RoomTrouble::Kind::Hanging);
    EXPECT_EQ(m_scheduler.Waiting(), 0U);
}

TEST_F(SnapcastLoansTest, WhicheverCallIsRefusedTheRoomSaysSoAndEverythingIsAsItWas) {
    for (int n = 1; n <= 3; ++n) {
        m_server.model = {};
        m_server.calls.clear();
        m_said.clear();
        Begin();
        m_server.refusedAt = n;
        EXPECT_NE(HoldAndHear("kitchen").find("refuses to set"), std::string::npos) << n;
        EXPECT_NE(m_said.back().find(": Not today"), std::string::npos) << n;
        EXPECT_EQ(Model(), kBefore) << n;
        EXPECT_EQ(Left(), 0U) << n;
        m_server.refusedAt = 0;
        EXPECT_EQ(HoldAndHear("kitchen"), "kitchen ready") << "the next announcement is heard: " << n;
    }
}

TEST_F(SnapcastLoansTest, WhicheverCallIsRefusedWhenItIsGivenBackItIsTriedAgain) {
    for (int n = 4; n <= 6; ++n) {
        m_server.model = {};
        m_server.calls.clear();
        Begin();
        const unsigned hold = Hold("kitchen");
        m_scheduler.DoPosted();
        m_server.refusedAt = n;
        Release(hold);
        EXPECT_NE(Left(), 0U) << n;
        m_scheduler.Advance(SnapcastLoans::kRetry);
        m_scheduler.DoPosted();
        EXPECT_EQ(Model(), kBefore) << n;
        EXPECT_EQ(Left(), 0U) << n;
    }
}

TEST_F(SnapcastLoansTest, AServerThatNeverTakesAnythingBackIsLeftAsItIsAndThatIsLogged) {
    Begin();
    const unsigned hold = Hold("hall");
    m_scheduler.DoPosted();
    m_server.refusedFrom = 1;
    Release(hold);
    for (int second = 0; second < 10; ++second) {
        m_scheduler.Advance(SnapcastLoans::kRetry);
        m_scheduler.DoPosted();
    }
    EXPECT_EQ(Left(), 0U);
    EXPECT_EQ(m_scheduler.Waiting(), 0U);
    ASSERT_EQ(m_log.lines.size(), 1U);
    EXPECT_NE(m_log.lines[0].find("does not take back what the client \"hall\" had"), std::string::npos);
}

TEST_F(SnapcastLoansTest, AServerThatOnlySaysThatItTakesBackIsToldAFewTimesWithPausesAndLeftAsItIs) {
    Begin();
    const unsigned hold = Hold("hall");
    m_scheduler.DoPosted();
    m_server.calls.clear();
    m_server.lies = 1000;
    Release(hold);
    EXPECT_LT(m_server.calls.size(), 10U) << "not as often as it answers";
    for (int second = 0; second < 10; ++second) {
        m_scheduler.Advance(SnapcastLoans::kRetry);
        m_scheduler.DoPosted();
    }
    EXPECT_EQ(m_server.calls.size(), 10U) << "stream and volume";
    EXPECT_EQ(Left(), 0U);
    EXPECT_EQ(m_scheduler.Waiting(), 0U);
    ASSERT_EQ(m_log.lines.size(), 1U);
    EXPECT_NE(m_log.lines[0].find("does not take back what the client \"hall\" had"), std::string::npos);
}

TEST_F(SnapcastLoansTest, AClientThatLeavesInMidPlayIsToldAndGivenBack) {
    Begin();
    (void)Hold("kitchen");
    m_scheduler.DoPosted();
    m_server.model.Client("kitchen").isConnected = false;
    m_server.Look();
    m_scheduler.DoPosted();
    EXPECT_EQ(m_said.back(),
              "kitchen: the client \"kitchen\" is not connected to the Snapcast server nas:1705");
    EXPECT_EQ(m_kind, RoomTrouble::Kind::Failed);
    EXPECT_EQ(Model(), kBefore);
    EXPECT_EQ(Left(), 0U);
}

TEST_F(SnapcastLoansTest, AClientThatLeavesBeforeTheServerHasDoneWhatItWasToldIsGivenBack) {
    for (std::size_t number = 1; number <= 3; ++number) {
        m_server.model = {};
        m_server.isSlow = true;
        m_server.calls.clear();
        Begin();
        (void)Hold("kitchen");
        while (m_server.calls.size() < number)
            m_scheduler.DoNextPosted();
        m_server.model.Client("kitchen").isConnected = false;
        m_loans->OnState(m_server.model.state);
        m_scheduler.DoPosted();
        EXPECT_EQ(Model(), kBefore) << number;
        EXPECT_EQ(Left(), 0U) << number;
    }
}

TEST_F(SnapcastLoansTest, AtTheEndEverythingIsGivenBackAtOnce) {
    Begin();
    (void)Hold("kitchen");
    (void)Hold("hall");
    m_scheduler.DoPosted();
    m_loans->GiveBackNow();
    EXPECT_EQ(Model(), kBefore);
}

} // namespace controller::audio::test
