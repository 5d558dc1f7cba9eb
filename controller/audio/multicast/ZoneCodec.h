#pragma once

#include "controller/audio/SoundFormat.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>

namespace controller::audio {

/// Every packet holds so much sound; telephones take it for granted.
constexpr std::int64_t kPacketFrames = kRate / 50;
constexpr std::chrono::milliseconds kPacketTime{20};

/// Silence in front of a clip, in which loudspeakers join and wake up, and behind it.
constexpr std::int64_t kSilentPackets = 10;

/// How a zone's sound is written; one channel.
struct ZoneCodec {
    const char* name;
    int factor; ///< its rate is the engine's, divided by this
    std::uint8_t payloadType;
    std::size_t sampleBytes;

    [[nodiscard]] constexpr std::size_t Samples() const {
        return static_cast<std::size_t>(kPacketFrames / factor);
    }
    [[nodiscard]] constexpr std::size_t PayloadBytes() const { return Samples() * sampleBytes; }
};

/// Of more than 30 kHz, 20 ms of 16 bits would not fit into one frame of Ethernet.
inline constexpr std::array kZoneCodecs{ZoneCodec{"pcmu", 6, 0, 1}, ZoneCodec{"l16", 2, 96, 2}};

} // namespace controller::audio
