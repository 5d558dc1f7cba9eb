#pragma once

#include "controller/audio/multicast/Broadcasts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace controller::audio::test {

/// One packet as it would have left.
struct SentPacket {
    std::string place;
    RtpStream::Header header{};
    std::vector<std::uint8_t> payload;

    [[nodiscard]] bool HasMarker() const { return (header[1] & 0x80U) != 0; }
    [[nodiscard]] unsigned Sequence() const { return header[2] * 256U + header[3]; }
    [[nodiscard]] bool IsSilent() const {
        return std::all_of(payload.begin(), payload.end(),
                           [](std::uint8_t byte) { return byte == 0xff || byte == 0; });
    }
    /// Of l16.
    [[nodiscard]] int SampleAt(std::size_t index) const {
        return static_cast<std::int16_t>(payload[2 * index] * 256 + payload[2 * index + 1]);
    }
};

/// Keeps what is sent.
class FakeSink final : public IPacketSink {
public:
    void Send(std::vector<OutgoingPacket>& packets) override {
        for (OutgoingPacket& packet : packets) {
            packet.error = fails ? fails(*packet.zone) : 0;
            if (packet.error == 0)
                sent.push_back({packet.zone->place, packet.header, *packet.payload});
        }
    }
    void Rest() override { ++rests; }

    [[nodiscard]] std::vector<SentPacket> To(const std::string& place) const {
        std::vector<SentPacket> packets;
        for (const SentPacket& packet : sent)
            if (packet.place == place)
                packets.push_back(packet);
        return packets;
    }

    std::function<int(const Zone&)> fails;
    std::vector<SentPacket> sent;
    int rests = 0;
};

/// Zones on one timeline; the test says what time it is.
class BroadcastFixture : public ::testing::Test {
protected:
    using Clock = Broadcasts::Clock;

    /// A zone and what it said.
    struct Room {
        std::shared_ptr<RoomSlot> slot;
        std::shared_ptr<ZoneStream> zone;
        std::vector<PlayerEvent::Kind> events;
        std::vector<std::string> troubles;
    };

    BroadcastFixture() { gst_init(nullptr, nullptr); }

    std::shared_ptr<Room> AddRoom(const std::string& output,
                                  unsigned volume = 100,
                                  std::chrono::milliseconds lead = std::chrono::milliseconds(200)) {
        auto room = std::make_shared<Room>();
        room->slot = m_timeline->AddRoom(1);
        PlayerOrder order;
        order.timeline = m_timeline;
        order.slot = room->slot;
        order.volume = volume;
        order.leadSilence = lead;
        order.context.silent = [troubles = &room->troubles](const std::string& why) {
            troubles->push_back(why);
        };
        room->zone = std::make_shared<ZoneStream>(order, ReadZone(output), m_start);
        room->zone->Listen(
            [events = &room->events](const PlayerEvent& event) { events->push_back(event.kind); });
        m_broadcasts.Add(room->zone);
        m_rooms.push_back(room);
        return room;
    }

    /// A clip of one level begins `lead` from now.
    void StartClip(std::int64_t frames,
                   float level,
                   std::chrono::milliseconds lead = std::chrono::milliseconds(200)) {
        m_clip = std::make_shared<Clip>();
        ASSERT_TRUE(m_clip->Append(std::vector<float>(static_cast<std::size_t>(frames * kChannels), level)));
        m_clip->Finish();
        const auto begin = m_timeline->StartClip(m_clip, FramesOf(lead), std::chrono::seconds(20));
        ASSERT_TRUE(begin);
        m_now = *begin - lead;
    }

    /// Lets so many packets' times pass, each at its own moment.
    void PassPackets(int count) {
        for (int i = 0; i < count; ++i) {
            m_due = m_broadcasts.Send(m_now);
            m_now += kPacketTime;
        }
    }

    FakeSink m_sink;
    int m_wakes = 0;
    Broadcasts m_broadcasts{m_sink, [this] {
                                ++m_wakes;
                            }};
    std::shared_ptr<Timeline> m_timeline = std::make_shared<Timeline>();
    RtpStream::Start m_start{0x01020304, 65530, 0xfffffe00};
    std::vector<std::shared_ptr<Room>> m_rooms;
    std::shared_ptr<Clip> m_clip;
    Clock::time_point m_now;
    std::optional<Clock::time_point> m_due;
};

} // namespace controller::audio::test
