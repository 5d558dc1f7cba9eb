#include "tests/controller/audio/PlayFixture.h"
#include "tests/controller/audio/snapcast/StandInServer.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace controller::audio::test {

namespace {

constexpr const char* kHouseBefore = "bath=80+kitchen=100:music hall=50:radio";

} // namespace

/// A real engine, and a Snapcast server that stands in for the real one.
class AudioEngineSnapcastTest : public PlayFixture {
protected:
    using Manner = StandInServer::Manner;

    /// What a client was fed is the clip and nothing else but silence, 200 ms of that behind it.
    void ExpectWholeFeed() const {
        const std::vector<short> heard = m_server.Heard();
        const auto isSound = [](short sample) {
            return sample != 0;
        };
        const auto first = std::find_if(heard.begin(), heard.end(), isSound);
        const auto last = std::find_if(heard.rbegin(), heard.rend(), isSound).base();
        ASSERT_EQ(last - first, static_cast<std::ptrdiff_t>(kClipFrames));
        for (std::size_t frame = 0; frame < kClipFrames; ++frame)
            ASSERT_EQ(*(first + static_cast<std::ptrdiff_t>(frame)), m_melody[frame * kChannels]) << frame;
        EXPECT_EQ(heard.end() - last, kRate / 5);
    }

    void Begin(const std::vector<std::string>& outputs) {
        m_harness = std::make_unique<EngineHarness>(outputs, EngineHarness::PatientLimits(),
                                                    EngineHarness::Borrows::Yes);
    }

    std::optional<PlayResult> Play() {
        m_harness->OpenWithAllRooms();
        return m_harness->PlayToEnd(m_clip);
    }

    bool IsAsBefore() {
        return m_harness->RunUntil(
            [&] { return m_server.Text() == kHouseBefore && m_harness->Left().empty(); });
    }

    /// In an announcement for the kitchen and another room, which is heard whole, the kitchen is not, and
    /// why.
    void ExpectTrouble(RoomTrouble::Kind kind, const std::string& reason) {
        Begin({m_server.Output("kitchen"), FileOutput("other.wav")});
        const auto result = Play();
        ASSERT_TRUE(result);
        EXPECT_EQ(result->error, "");
        EXPECT_EQ(result->rooms, Rooms{2});
        ASSERT_TRUE(m_harness->CloseAndWait());
        ExpectWholeClip("other.wav");
        ASSERT_EQ(m_harness->Troubles().size(), 1U);
        EXPECT_EQ(m_harness->Troubles()[0].roomId, 1U);
        EXPECT_EQ(m_harness->Troubles()[0].kind, kind);
        EXPECT_NE(m_harness->Troubles()[0].reason.find(reason), std::string::npos)
            << m_harness->Troubles()[0].reason;
    }

    StandInServer m_server;
    std::unique_ptr<EngineHarness> m_harness;
};

TEST_F(AudioEngineSnapcastTest, RoomsOfOneServerShareOneFeedAndEachHasItsVolume) {
    Begin({m_server.Output("kitchen"), m_server.Output("hall"), FileOutput("other.wav")});
    m_harness->Engine().SetVolume(1, 50);
    m_harness->OpenWithAllRooms();
    ASSERT_TRUE(m_harness->RunUntil(
        [&] { return m_server.Text() == "bath=80:music hall=100:announcements kitchen=33:announcements"; }));
    const auto result = m_harness->PlayToEnd(m_clip);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->error, "");
    EXPECT_EQ(result->rooms, (Rooms{1, 2, 3}));
    EXPECT_TRUE(m_harness->CloseAndWait());
    EXPECT_TRUE(IsAsBefore());
    EXPECT_EQ(m_server.Feeds(), 1U);
    ExpectWholeFeed();
    ExpectWholeClip("other.wav");
    EXPECT_TRUE(m_harness->Troubles().empty());
}

TEST_F(AudioEngineSnapcastTest, TheSoundLeavesEarlyWhereOtherRoomsAreSilentFirst) {
    std::vector<RoomConfig> rooms(1);
    rooms[0] = {1, "Kitchen", ParseOutput(m_server.Output("kitchen")), std::chrono::milliseconds(300)};
    m_harness =
        std::make_unique<EngineHarness>(rooms, EngineHarness::PatientLimits(), EngineHarness::Borrows::Yes);
    const auto result = Play();
    ASSERT_TRUE(result);
    EXPECT_EQ(result->rooms, Rooms{1});
    ExpectWholeFeed();
    // 300 ms less what clients are behind at a buffer of 200 ms.
    const auto heard = m_server.Heard();
    const auto first = std::find_if(heard.begin(), heard.end(), [](short sample) { return sample != 0; });
    EXPECT_NEAR(static_cast<double>(first - heard.begin()) / kRate, 0.129, 0.08);
}

TEST_F(AudioEngineSnapcastTest, OneAnnouncementAfterTheOtherIsWholeAndAllIsAsBefore) {
    Begin({m_server.Output("kitchen")});
    for (const unsigned feeds : {1U, 2U}) {
        const auto result = Play();
        ASSERT_TRUE(result);
        EXPECT_EQ(result->rooms, Rooms{1});
        EXPECT_TRUE(m_harness->CloseAndWait());
        EXPECT_EQ(m_server.Feeds(), feeds);
    }
    EXPECT_TRUE(IsAsBefore());
    EXPECT_EQ(m_server.Heard().size() > 2 * kClipFrames, true);
    EXPECT_TRUE(m_harness->Troubles().empty());
}

TEST_F(AudioEngineSnapcastTest, WhatIsStoppedInMidPlayIsGivenBack) {
    Begin({m_server.Output("kitchen")});
    m_harness->OpenWithAllRooms();
    std::optional<PlayResult> result;
    m_harness->Engine().Play(m_clip, [&](const PlayResult& played) { result = played; });
    ASSERT_TRUE(m_harness->RunUntil([&] { return !m_server.Heard().empty(); }));
    m_harness->Engine().StopPlay();
    ASSERT_TRUE(m_harness->RunUntil([&] { return result.has_value(); }));
    EXPECT_TRUE(result->isStopped);
    EXPECT_TRUE(m_harness->CloseAndWait());
    EXPECT_LT(m_server.Heard().size(), kClipFrames);
    ASSERT_TRUE(
        m_harness->RunUntil([&] { return m_server.Text().find("announcements") == std::string::npos; }));
    m_harness->DestroyEngine();
    EXPECT_EQ(m_server.Text(), kHouseBefore);
}

TEST_F(AudioEngineSnapcastTest, AnEngineThatEndsInMidPlayGivesBackFirst) {
    Begin({m_server.Output("kitchen"), m_server.Output("hall")});
    m_harness->OpenWithAllRooms();
    m_harness->Engine().Play(m_clip, {});
    ASSERT_TRUE(m_harness->RunUntil([&] { return !m_server.Heard().empty(); }));
    m_harness->DestroyEngine();
    EXPECT_EQ(m_server.Text(), kHouseBefore);
}

TEST_F(AudioEngineSnapcastTest, AServerThatIsGoneIsToldAndIsHeardAgainWhenItIsBack) {
    m_server.Kill();
    ExpectTrouble(RoomTrouble::Kind::Refused, "cannot be reached: Connection refused");
    m_server.Start();
    const auto result = Play();
    ASSERT_TRUE(result);
    EXPECT_EQ(result->rooms, (Rooms{1, 2}));
    EXPECT_TRUE(m_harness->CloseAndWait());
    EXPECT_TRUE(IsAsBefore());
}

TEST_F(AudioEngineSnapcastTest, AConnectionThatWasLostMeanwhileIsMadeAnew) {
    Begin({m_server.Output("kitchen")});
    for (int round = 0; round < 2; ++round) {
        const auto result = Play();
        ASSERT_TRUE(result);
        EXPECT_EQ(result->rooms, Rooms{1}) << round;
        EXPECT_TRUE(m_harness->CloseAndWait());
        EXPECT_TRUE(IsAsBefore());
        m_server.Kill();
        m_server.Start();
    }
}

TEST_F(AudioEngineSnapcastTest, AServerThatHangsIsGivenUp) {
    m_server.SetManner(Manner::Hangs);
    ExpectTrouble(RoomTrouble::Kind::Hanging, "does not answer");
}

TEST_F(AudioEngineSnapcastTest, WhateverElseAnswersThereIsTold) {
    m_server.SetManner(Manner::TalksNonsense);
    ExpectTrouble(RoomTrouble::Kind::Refused, "answers what is no Snapcast server's");
    m_server.SetManner(Manner::NestsDeeply);
    ExpectTrouble(RoomTrouble::Kind::Refused, "answers what is no Snapcast server's");
    m_server.SetManner(Manner::RefusesStatus);
    ExpectTrouble(RoomTrouble::Kind::Refused, "refuses to say what it has: Not today");
    m_server.SetManner(Manner::RefusesWithoutWords);
    ExpectTrouble(RoomTrouble::Kind::Refused, "refuses to say what it has");
    m_server.SetManner(Manner::RefusesChanges);
    ExpectTrouble(RoomTrouble::Kind::Refused, "refuses to set the client out of its group: Not today");
    m_server.SetManner(Manner::ClosesAtChanges);
    ExpectTrouble(RoomTrouble::Kind::Refused, "has closed the connection");
    EXPECT_EQ(m_server.Text(), kHouseBefore);
}

TEST_F(AudioEngineSnapcastTest, ASourceThatRefusesIsToldAndTheClientGivenBack) {
    m_server.SetManner(Manner::IgnoresSource);
    ExpectTrouble(RoomTrouble::Kind::Failed, "has closed the connection");
    m_harness->DestroyEngine();
    EXPECT_EQ(m_server.Text(), kHouseBefore);
}

TEST_F(AudioEngineSnapcastTest, AServerThatIsKilledInMidPlayIsTold) {
    Begin({m_server.Output("kitchen"), FileOutput("other.wav")});
    m_harness->OpenWithAllRooms();
    std::optional<PlayResult> result;
    m_harness->Engine().Play(m_clip, [&](const PlayResult& played) { result = played; });
    ASSERT_TRUE(m_harness->RunUntil([&] { return !m_server.Heard().empty(); }));
    m_server.Kill();
    ASSERT_TRUE(m_harness->RunUntil([&] { return result.has_value(); }));
    EXPECT_EQ(result->rooms, Rooms{2});
    EXPECT_TRUE(m_harness->CloseAndWait());
    ExpectWholeClip("other.wav");
    EXPECT_TRUE(m_harness->HasTrouble(1, RoomTrouble::Kind::Failed));
    EXPECT_FALSE(m_harness->Left().empty()) << "what it had is known until it is back";
}

TEST_F(AudioEngineSnapcastTest, AClientThatLeavesInMidPlayIsTold) {
    Begin({m_server.Output("kitchen")});
    m_harness->OpenWithAllRooms();
    std::optional<PlayResult> result;
    m_harness->Engine().Play(m_clip, [&](const PlayResult& played) { result = played; });
    ASSERT_TRUE(m_harness->RunUntil([&] { return !m_server.Heard().empty(); }));
    m_server.Change([](SnapcastModel& model) { model.Client("kitchen").isConnected = false; });
    ASSERT_TRUE(m_harness->RunUntil([&] { return result.has_value(); }));
    EXPECT_NE(result->error.find("the client \"kitchen\" is not connected"), std::string::npos)
        << result->error;
    EXPECT_TRUE(m_harness->HasTrouble(1, RoomTrouble::Kind::Failed));
}

} // namespace controller::audio::test
