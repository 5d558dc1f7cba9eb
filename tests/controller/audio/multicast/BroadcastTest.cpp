#include "tests/controller/audio/multicast/BroadcastFixture.h"

#include <algorithm>
#include <cerrno>

namespace controller::audio::test {

using BroadcastTest = BroadcastFixture;
using Kinds = std::vector<PlayerEvent::Kind>;

namespace {

constexpr auto kEnded = PlayerEvent::Kind::Ended;
constexpr auto kGone = PlayerEvent::Kind::Gone;

} // namespace

TEST_F(BroadcastTest, AClipIsSentInPacketsOfTwentyMillisecondsWithSilenceOnEitherSide) {
    const auto room = AddRoom("239.255.10.1:5004");
    EXPECT_EQ(m_timeline->StateOf(*room->slot), RoomSlot::State::Running);
    EXPECT_EQ(m_broadcasts.Send(Clock::now()), std::nullopt) << "there is nothing to send";
    StartClip(5 * kPacketFrames, 0.5F);
    EXPECT_EQ(m_wakes, 1);
    const auto begin = m_now;
    for (std::size_t packet = 0; packet < 25; ++packet) {
        EXPECT_EQ(m_sink.sent.size(), packet);
        PassPackets(1);
        EXPECT_EQ(m_due, m_now) << "the next one";
    }
    EXPECT_TRUE(room->events.empty());
    PassPackets(1);
    EXPECT_EQ(m_now - begin, 26 * kPacketTime);
    EXPECT_EQ(m_due, std::nullopt);
    ASSERT_EQ(m_sink.sent.size(), 25U);
    for (std::size_t packet = 0; packet < 25; ++packet) {
        EXPECT_EQ(m_sink.sent[packet].place, "239.255.10.1:5004");
        EXPECT_EQ(m_sink.sent[packet].payload.size(), 160U);
        EXPECT_EQ(m_sink.sent[packet].IsSilent(), packet < 10 || packet >= 15) << packet;
    }
    // Half of full scale, where the filter's edges are far away.
    EXPECT_EQ(m_sink.sent[12].payload, std::vector<std::uint8_t>(160, 0x8f));
    EXPECT_EQ(room->events, Kinds{kEnded});
    EXPECT_EQ(m_timeline->StateOf(*room->slot), RoomSlot::State::Done);
    EXPECT_TRUE(m_broadcasts.IsEmpty());
    EXPECT_EQ(m_sink.rests, 1);
    m_broadcasts.Stop(room->zone);
    EXPECT_EQ(room->events, (Kinds{kEnded, kGone}));
    EXPECT_TRUE(room->troubles.empty());
}

TEST_F(BroadcastTest, HeadersCountPacketsAndSamplesFromTheirBeginningOnAndWrap) {
    (void)AddRoom("239.255.10.1:5004");
    StartClip(kPacketFrames, 0.5F);
    PassPackets(30);
    ASSERT_EQ(m_sink.sent.size(), 21U);
    const auto header = [&](std::size_t packet) {
        return m_sink.sent[packet].header;
    };
    // Version 2, marker on the first, payload type 0; sequence 65530; time 2^32 - 512; source.
    EXPECT_EQ(header(0), (RtpStream::Header{0x80, 0x80, 0xff, 0xfa, 0xff, 0xff, 0xfe, 0x00, 1, 2, 3, 4}));
    EXPECT_EQ(header(1), (RtpStream::Header{0x80, 0x00, 0xff, 0xfb, 0xff, 0xff, 0xfe, 0xa0, 1, 2, 3, 4}));
    EXPECT_EQ(header(3), (RtpStream::Header{0x80, 0x00, 0xff, 0xfd, 0xff, 0xff, 0xff, 0xe0, 1, 2, 3, 4}));
    EXPECT_EQ(header(4), (RtpStream::Header{0x80, 0x00, 0xff, 0xfe, 0x00, 0x00, 0x00, 0x80, 1, 2, 3, 4}));
    EXPECT_EQ(header(5), (RtpStream::Header{0x80, 0x00, 0xff, 0xff, 0x00, 0x00, 0x01, 0x20, 1, 2, 3, 4}));
    EXPECT_EQ(header(6), (RtpStream::Header{0x80, 0x00, 0x00, 0x00, 0x00, 0x00, 0x01, 0xc0, 1, 2, 3, 4}));
}

TEST_F(BroadcastTest, EachZoneHasItsCodecAndItsVolume) {
    (void)AddRoom("239.255.10.1:5004 codec=l16");
    (void)AddRoom("239.255.10.2:5004 codec=l16", 50);
    (void)AddRoom("239.255.10.3:5004", 0);
    StartClip(3 * kPacketFrames, 0.5F);
    PassPackets(30);
    ASSERT_EQ(m_sink.sent.size(), 3 * 23U);
    const auto loud = m_sink.To("239.255.10.1:5004");
    const auto soft = m_sink.To("239.255.10.2:5004");
    ASSERT_EQ(loud[11].payload.size(), 960U);
    EXPECT_EQ(loud[0].header[1], 0x80 | 96);
    EXPECT_EQ(loud[1].header[7] - loud[0].header[7], 480 % 256);
    for (std::size_t sample = 0; sample < 480; ++sample) {
        EXPECT_NEAR(loud[11].SampleAt(sample), 16384, 2) << sample;
        EXPECT_NEAR(soft[11].SampleAt(sample), 2048, 2) << sample;
    }
    const auto silent = m_sink.To("239.255.10.3:5004");
    EXPECT_TRUE(std::all_of(silent.begin(), silent.end(),
                            [](const SentPacket& packet) { return packet.IsSilent(); }));
}

TEST_F(BroadcastTest, AChangeOfVolumeIsSpreadOverOnePacket) {
    const auto room = AddRoom("239.255.10.1:5004 codec=l16");
    StartClip(20 * kPacketFrames, 0.5F);
    PassPackets(15);
    room->zone->SetVolume(50);
    PassPackets(2);
    const auto& sent = m_sink.sent;
    EXPECT_NEAR(sent[14].SampleAt(479), 16384, 2);
    for (std::size_t sample = 0; sample < 479; ++sample)
        ASSERT_GE(sent[15].SampleAt(sample), sent[15].SampleAt(sample + 1)) << sample;
    EXPECT_NEAR(sent[15].SampleAt(240), 9216, 40);
    EXPECT_NEAR(sent[16].SampleAt(0), 2048, 2);
}

TEST_F(BroadcastTest, WhatIsStoppedFadesOutOverFiftyMillisecondsAndSilenceFollows) {
    const auto room = AddRoom("239.255.10.1:5004 codec=l16");
    StartClip(100 * kPacketFrames, 0.5F);
    PassPackets(15);
    ASSERT_TRUE(m_timeline->FadeOut());
    PassPackets(30);
    ASSERT_EQ(m_sink.sent.size(), 15 + 3 + 10U);
    std::vector<int> samples;
    for (std::size_t packet = 15; packet < 18; ++packet)
        for (std::size_t sample = 0; sample < 480; ++sample)
            samples.push_back(m_sink.sent[packet].SampleAt(sample));
    EXPECT_NEAR(samples[0], 16384, 20);
    EXPECT_NEAR(samples[600], 8192, 20);
    EXPECT_TRUE(std::is_sorted(samples.rbegin(), samples.rend()));
    EXPECT_TRUE(std::all_of(samples.begin() + 1200, samples.end(), [](int sample) { return sample == 0; }));
    for (std::size_t packet = 18; packet < 28; ++packet)
        EXPECT_TRUE(m_sink.sent[packet].IsSilent()) << packet;
    EXPECT_EQ(room->events, Kinds{kEnded});
}

TEST_F(BroadcastTest, WhatIsStoppedBeforeItBeginsEndsAtOnce) {
    const auto room = AddRoom("239.255.10.1:5004");
    StartClip(100 * kPacketFrames, 0.5F);
    PassPackets(4);
    ASSERT_TRUE(m_timeline->FadeOut());
    PassPackets(10);
    EXPECT_EQ(m_sink.sent.size(), 4U);
    EXPECT_EQ(room->events, Kinds{kEnded});
}

TEST_F(BroadcastTest, AZoneThatLeavesFadesOutAndTheOthersGoOn) {
    const auto leaving = AddRoom("239.255.10.1:5004 codec=l16");
    const auto other = AddRoom("239.255.10.2:5004 codec=l16");
    StartClip(30 * kPacketFrames, 0.5F);
    PassPackets(15);
    m_broadcasts.Stop(leaving->zone);
    PassPackets(45);
    const auto packets = m_sink.To("239.255.10.1:5004");
    ASSERT_EQ(packets.size(), 15 + 1 + 10U);
    EXPECT_NEAR(packets[15].SampleAt(240), 8192, 40);
    EXPECT_EQ(packets[15].SampleAt(479), 0);
    for (std::size_t packet = 16; packet < 26; ++packet)
        EXPECT_TRUE(packets[packet].IsSilent()) << packet;
    EXPECT_EQ(leaving->events, Kinds{kGone});
    EXPECT_EQ(m_sink.To("239.255.10.2:5004").size(), 50U);
    EXPECT_EQ(other->events, Kinds{kEnded});
}

TEST_F(BroadcastTest, AZoneThatHasSentNothingLeavesAtOnceAndSoDoesOneThatIsGivenUp) {
    const auto waiting = AddRoom("239.255.10.1:5004");
    m_broadcasts.Stop(waiting->zone);
    EXPECT_EQ(waiting->events, Kinds{kGone});
    const auto playing = AddRoom("239.255.10.2:5004");
    StartClip(30 * kPacketFrames, 0.5F);
    PassPackets(15);
    m_broadcasts.Abort(playing->zone);
    EXPECT_EQ(playing->events, Kinds{kGone});
    PassPackets(5);
    EXPECT_EQ(m_sink.sent.size(), 15U);
    EXPECT_TRUE(m_broadcasts.IsEmpty());
}

TEST_F(BroadcastTest, NothingIsLeftOutWhenTheThreadIsLate) {
    (void)AddRoom("239.255.10.1:5004");
    StartClip(10 * kPacketFrames, 0.5F);
    m_now += 7 * kPacketTime;
    PassPackets(1);
    EXPECT_EQ(m_sink.sent.size(), 8U);
    m_now += 30 * kPacketTime;
    PassPackets(1);
    ASSERT_EQ(m_sink.sent.size(), 30U);
    for (std::size_t packet = 0; packet < 30; ++packet) {
        EXPECT_EQ(m_sink.sent[packet].Sequence(), (65530 + packet) % 65536);
        EXPECT_EQ(m_sink.sent[packet].IsSilent(), packet < 10 || packet >= 20) << packet;
    }
}

TEST_F(BroadcastTest, AZoneThatComesLateGoesOnWithThePresentAndSaysSo) {
    const auto first = AddRoom("239.255.10.1:5004");
    StartClip(100 * kPacketFrames, 0.5F, std::chrono::milliseconds(0));
    // The clip has begun for those that ask the clock.
    while (Clock::now() <= m_now)
        continue;
    m_now += 10 * kPacketTime;
    PassPackets(1);
    const auto late = AddRoom("239.255.10.2:5004");
    EXPECT_EQ(late->events, Kinds{PlayerEvent::Kind::Late});
    PassPackets(2);
    const auto packets = m_sink.To("239.255.10.2:5004");
    ASSERT_EQ(packets.size(), 2U);
    EXPECT_TRUE(packets[0].HasMarker());
    EXPECT_FALSE(packets[0].IsSilent());
    EXPECT_FALSE(packets[1].HasMarker());
    EXPECT_TRUE(first->events.empty());
}

TEST_F(BroadcastTest, ARoomThatAsksForMoreSilenceGetsItInWholePackets) {
    (void)AddRoom("239.255.10.1:5004", 100, std::chrono::milliseconds(301));
    (void)AddRoom("239.255.10.2:5004");
    StartClip(kPacketFrames, 0.5F, std::chrono::milliseconds(320));
    PassPackets(40);
    EXPECT_EQ(m_sink.To("239.255.10.1:5004").size(), 16 + 1 + 10U);
    EXPECT_EQ(m_sink.To("239.255.10.2:5004").size(), 10 + 1 + 10U);
}

TEST_F(BroadcastTest, WhatCannotBeSentIsToldOnceAndTriedAgainAndHoldsUpNobody) {
    const auto room = AddRoom("239.255.10.1:5004 interface=lo");
    const auto other = AddRoom("239.255.10.2:5004");
    m_sink.fails = [](const Zone& zone) {
        return zone.place == "239.255.10.1:5004" ? ENETUNREACH : 0;
    };
    StartClip(10 * kPacketFrames, 0.5F);
    PassPackets(15);
    EXPECT_EQ(room->troubles,
              (std::vector<std::string>{"nothing can be sent to 239.255.10.1:5004 through lo: "
                                        "Network is unreachable"}));
    EXPECT_TRUE(m_sink.To("239.255.10.1:5004").empty());
    m_sink.fails = nullptr;
    PassPackets(20);
    EXPECT_EQ(m_sink.To("239.255.10.1:5004").size(), 15U);
    EXPECT_EQ(m_sink.To("239.255.10.2:5004").size(), 30U);
    EXPECT_EQ(room->troubles.size(), 1U);
    EXPECT_TRUE(other->troubles.empty());
    EXPECT_EQ(room->events, Kinds{kEnded});
    EXPECT_EQ(other->events, Kinds{kEnded});
}

TEST_F(BroadcastTest, WithoutTheEndOfTheClipItGoesOnAndStopsWithTheRooms) {
    const auto room = AddRoom("239.255.10.1:5004");
    m_clip = std::make_shared<Clip>();
    ASSERT_TRUE(m_clip->Append(std::vector<float>(static_cast<std::size_t>(kRate * kChannels), 0.5F)));
    const auto begin =
        m_timeline->StartClip(m_clip, FramesOf(std::chrono::milliseconds(200)), std::chrono::seconds(20));
    ASSERT_TRUE(begin);
    m_now = *begin - std::chrono::milliseconds(200);
    PassPackets(12);
    EXPECT_TRUE(room->events.empty());
    m_clip->Abandon();
    m_broadcasts.StopAll();
    PassPackets(20);
    EXPECT_EQ(m_sink.sent.size(), 12 + 1 + 10U);
    EXPECT_EQ(room->events, Kinds{kGone});
    EXPECT_TRUE(m_broadcasts.IsEmpty());
}

} // namespace controller::audio::test
