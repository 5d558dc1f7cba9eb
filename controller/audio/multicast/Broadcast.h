#pragma once

#include "controller/audio/Timeline.h"
#include "controller/audio/multicast/Decimator.h"
#include "controller/audio/multicast/IPacketSink.h"
#include "controller/audio/multicast/ZoneStream.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace controller::audio {

/// The zones of one stream of the engine. The clip is read and brought to each rate once, whatever their
/// number. Packets stand in step with the clip: one begins with its first frame, and each is due at the time
/// of its own first frame, so that zones and other rooms play together. One thread.
class Broadcast final {
public:
    using Clock = Timeline::Clock;
    using ZonePointer = std::shared_ptr<ZoneStream>;

    explicit Broadcast(std::shared_ptr<Timeline> timeline);

    [[nodiscard]] const std::shared_ptr<Timeline>& GetTimeline() const { return m_timeline; }
    [[nodiscard]] bool IsEmpty() const { return m_zones.empty(); }

    void Add(const ZonePointer& zone);

    /// Ends the zone's sound in good order; it is closed then. So is one that is not here any more, at once.
    void Stop(const ZonePointer& zone);
    void StopAll();

    /// Closes it.
    void Abort(const ZonePointer& zone);

    /// When the next packets are due; nothing as long as there is no clip.
    [[nodiscard]] std::optional<Clock::time_point> Due(Clock::time_point now);

    /// Sends the packets that are due next, or ends.
    void SendNext(IPacketSink& sink);

private:
    [[nodiscard]] std::int64_t FirstPacket(Clock::time_point now) const;
    [[nodiscard]] bool HasEnded() const;
    [[nodiscard]] const std::vector<float>* SoundFor(const ZoneCodec& codec);
    void MakeSound(std::size_t codec, std::int64_t position);
    void End();
    void DropThoseThatLeft();

    /// The clip at the rate of one codec, a packet long.
    struct Sound {
        Decimator decimator;
        std::vector<float> samples;
        bool isMade = false; ///< of the packet that is due
    };

    const std::shared_ptr<Timeline> m_timeline;
    bool m_isLate = false;            ///< The clip was there before the first zone.
    std::vector<ZonePointer> m_zones; ///< those of one route stand together
    std::optional<Placement> m_clip;
    std::int64_t m_next = 0; ///< packet; 0 begins with the clip
    std::optional<std::int64_t> m_fadeFrom;
    std::array<Sound, kZoneCodecs.size()> m_sounds;
    std::vector<float> m_frames;
    std::vector<OutgoingPacket> m_packets;
    std::vector<ZoneStream*> m_senders; ///< whose packets those are
};

} // namespace controller::audio
