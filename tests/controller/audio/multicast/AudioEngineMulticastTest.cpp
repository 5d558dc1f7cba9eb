#include "tests/controller/audio/PlayFixture.h"
#include "tests/controller/audio/multicast/Receiver.h"

#include <algorithm>
#include <optional>
#include <set>

namespace controller::audio::test {

/// A real engine that sends to this machine's own network.
class AudioEngineMulticastTest : public PlayFixture {
protected:
    using Packets = std::vector<std::vector<std::uint8_t>>;

    AudioEngineMulticastTest() : m_canHear(m_receiver.CanHear()) {}

    void SetUp() override {
        if (!m_canHear)
            GTEST_SKIP() << "this machine sends no multicast to itself";
    }

    static bool IsSilent(const std::vector<std::uint8_t>& packet) {
        return std::all_of(packet.begin() + 12, packet.end(), [](std::uint8_t byte) { return byte == 0xff; });
    }

    /// One whole announcement: 200 ms of silence, the clip, 200 ms of silence.
    static void ExpectWhole(const Packets& packets) {
        ASSERT_EQ(packets.size(), 10 + 25 + 10U);
        for (std::size_t index = 0; index < packets.size(); ++index) {
            const auto sequence = [&](std::size_t place) {
                return packets[place][2] * 256U + packets[place][3];
            };
            ASSERT_EQ(packets[index].size(), 12 + 160U);
            EXPECT_EQ(packets[index][1], index == 0 ? 0x80 : 0);
            EXPECT_EQ(sequence(index), (sequence(0) + index) % 65536);
            EXPECT_EQ(IsSilent(packets[index]), index < 10 || index >= 35) << index;
        }
    }

    static std::vector<std::uint8_t> SourceOf(const Packets& packets) {
        return {packets.front().begin() + 8, packets.front().begin() + 12};
    }

    Receiver m_receiver{"239.255.83.1"};
    const bool m_canHear;
};

TEST_F(AudioEngineMulticastTest, EachAnnouncementIsSentWholeUnderASourceOfItsOwnBesideOtherRooms) {
    EngineHarness harness({m_receiver.Output(), FileOutput("room-%n.wav")});
    std::set<std::vector<std::uint8_t>> sources;
    for (const char* recording : {"room-1.wav", "room-2.wav"}) {
        harness.OpenWithAllRooms();
        const auto result = harness.PlayToEnd(m_clip);
        ASSERT_TRUE(result);
        EXPECT_EQ(result->error, "");
        EXPECT_EQ(result->rooms, (Rooms{1, 2}));
        EXPECT_TRUE(harness.CloseAndWait());
        ExpectWholeClip(recording);
        const auto packets = m_receiver.Take();
        ExpectWhole(packets);
        ASSERT_FALSE(packets.empty());
        sources.insert(SourceOf(packets));
    }
    EXPECT_EQ(sources.size(), 2U);
    EXPECT_TRUE(harness.Troubles().empty());
}

TEST_F(AudioEngineMulticastTest, ASecondPlayOnTheSameStreamIsWhole) {
    EngineHarness harness({m_receiver.Output()});
    harness.OpenWithAllRooms();
    for (int round = 0; round < 2; ++round) {
        const auto result = harness.PlayToEnd(m_clip);
        ASSERT_TRUE(result);
        EXPECT_EQ(result->rooms, Rooms{1});
        ExpectWhole(m_receiver.Take());
    }
}

TEST_F(AudioEngineMulticastTest, WhereNothingCanBeSentTheRoomIsInTroubleAndTheOthersPlayWhole) {
    const std::string output = m_receiver.Output();
    EngineHarness harness({FileOutput("good.wav"), output.substr(0, output.rfind('=')) + "=nosuch0"});
    harness.OpenWithAllRooms();
    const auto result = harness.PlayToEnd(m_clip);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->error, "");
    EXPECT_EQ(result->rooms, Rooms{1});
    EXPECT_TRUE(harness.CloseAndWait());
    ExpectWholeClip("good.wav");
    ASSERT_EQ(harness.Troubles().size(), 1U);
    EXPECT_EQ(harness.Troubles().front().roomId, 2U);
    EXPECT_EQ(harness.Troubles().front().kind, RoomTrouble::Kind::Silent);
    EXPECT_NE(harness.Troubles().front().reason.find("through nosuch0: No such device"), std::string::npos);
    EXPECT_TRUE(m_receiver.Take().empty());
}

TEST_F(AudioEngineMulticastTest, WhatIsUrgentGoesToTheUrgentAddressOfTheZonesThatHaveOneAndNothingElseDoes) {
    const Receiver urgent("239.255.83.4");
    const Receiver other("239.255.83.5");
    const std::string usualOutput = m_receiver.Output();
    const std::string place = urgent.Output().substr(0, urgent.Output().find(" interface"));
    EngineHarness harness({usualOutput + " urgent=" + place.substr(place.find(' ') + 1), other.Output(),
                           FileOutput("room-%n.wav")});
    for (const bool isUrgent : {true, false}) {
        harness.SetUrgent(isUrgent);
        harness.OpenWithAllRooms();
        for (int round = 0; round < 2; ++round) {
            harness.SetUrgent(!isUrgent); // What plays goes on as it has begun.
            const auto result = harness.PlayToEnd(m_clip);
            ASSERT_TRUE(result);
            EXPECT_EQ(result->rooms, (Rooms{1, 2, 3}));
            ExpectWhole((isUrgent ? urgent : m_receiver).Take());
            EXPECT_TRUE((isUrgent ? m_receiver : urgent).Take().empty());
            ExpectWhole(other.Take());
        }
        EXPECT_TRUE(harness.CloseAndWait());
    }
    for (const char* recording : {"room-1.wav", "room-2.wav", "room-3.wav", "room-4.wav"})
        ExpectWholeClip(recording);
}

TEST_F(AudioEngineMulticastTest, WhatIsUrgentGoesToTheUrgentAddressAlsoWhenItEndsTheTestOfAnotherPlace) {
    const Receiver urgent("239.255.83.4");
    const std::string place = urgent.Output().substr(0, urgent.Output().find(" interface"));
    EngineHarness harness({m_receiver.Output() + " urgent=" + place.substr(place.find(' ') + 1)});
    harness.Engine().TryOutput(ParseOutput(FileOutput("place.wav")), m_clip, 100, [](const std::string&) {});
    harness.SetUrgent(true);
    harness.OpenWithAllRooms();
    const auto result = harness.PlayToEnd(m_clip);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->rooms, Rooms{1});
    EXPECT_TRUE(harness.CloseAndWait());
    ExpectWhole(urgent.Take());
    EXPECT_TRUE(m_receiver.Take().empty());
}

TEST_F(AudioEngineMulticastTest, AStreamThatIsClosedInMidPlayFadesOutBeforeItIsClosed) {
    EngineHarness harness({m_receiver.Output(), FileOutput("room.wav")});
    harness.OpenWithAllRooms();
    harness.Engine().Play(m_clip, {});
    // The room beside it has heard some of the clip.
    ASSERT_TRUE(harness.RunUntil([&] { return Recorded("room.wav").First() >= 0; }));
    ASSERT_TRUE(harness.CloseAndWait());
    const auto packets = m_receiver.Take();
    ASSERT_GT(packets.size(), 20U);
    EXPECT_LT(packets.size(), 45U);
    EXPECT_TRUE(std::all_of(packets.end() - 10, packets.end(), IsSilent));
    EXPECT_FALSE(IsSilent(*(packets.end() - 11)));
}

TEST_F(AudioEngineMulticastTest, AnEngineThatEndsInMidPlayLeavesNothingBehind) {
    EngineHarness harness({m_receiver.Output(), FileOutput("room.wav")});
    harness.OpenWithAllRooms();
    harness.Engine().Play(m_clip, {});
    ASSERT_TRUE(harness.RunUntil([&] { return Recorded("room.wav").First() >= 0; }));
    harness.DestroyEngine();
    const auto packets = m_receiver.Take();
    ASSERT_GT(packets.size(), 20U);
    EXPECT_TRUE(std::all_of(packets.end() - 10, packets.end(), IsSilent));
}

TEST_F(AudioEngineMulticastTest, AThousandZonesPlayWholeOnOneThread) {
    constexpr std::size_t kZones = 1000;
    EngineHarness harness(std::vector<std::string>(kZones, m_receiver.Output()));
    harness.OpenWithAllRooms();
    std::optional<PlayResult> result;
    harness.Engine().Play(m_clip, [&](const PlayResult& played) { result = played; });
    std::set<std::vector<std::uint8_t>> sources;
    ASSERT_TRUE(harness.RunUntil([&] {
        for (const auto& packet : m_receiver.Take())
            sources.emplace(packet.begin() + 8, packet.begin() + 12);
        return result.has_value();
    }));
    EXPECT_EQ(result->error, "");
    EXPECT_EQ(result->rooms.size(), kZones);
    EXPECT_TRUE(harness.Troubles().empty());
    // What this socket has no room for is dropped; each zone is heard sooner or later.
    EXPECT_GT(sources.size(), kZones / 2);
    EXPECT_TRUE(harness.CloseAndWait());
}

} // namespace controller::audio::test
