#pragma once

#include "controller/audio/IRoomPlayer.h"
#include "controller/audio/Output.h"
#include "controller/audio/multicast/IPacketSink.h"
#include "controller/audio/multicast/RtpStream.h"
#include "controller/audio/multicast/Zone.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace controller::audio {

/// One zone in one announcement: its packets, at its volume. SetVolume and Listen: any thread; everything
/// else happens on the thread that sends.
class ZoneStream final {
public:
    ZoneStream(PlayerOrder order, Zone zone, const RtpStream::Start& start);

    /// Before it is handed to whoever sends.
    void Listen(IRoomPlayer::OnEvent onEvent) { m_onEvent = std::move(onEvent); }
    void SetVolume(unsigned volume);

    [[nodiscard]] const Zone& GetZone() const { return m_zone; }
    [[nodiscard]] const std::shared_ptr<Timeline>& GetTimeline() const { return m_order.timeline; }

    /// The place of its first packet; that of the clip's is 0.
    [[nodiscard]] std::int64_t FirstPacket() const { return m_firstPacket; }

    /// It is there for the clip, from now on.
    void Open();

    /// Its next packet: this sound, of its codec; null is silence.
    [[nodiscard]] OutgoingPacket Next(const std::vector<float>* sound);

    /// Its packet was sent, or not, and why. It has everything before frame `next`.
    void Sent(int error, std::int64_t next);

    /// The next packet fades out, and silence follows. False when it has sent nothing, so that nothing is
    /// left to do.
    [[nodiscard]] bool Leave();
    [[nodiscard]] bool IsLeaving() const { return m_isLeaving; }
    [[nodiscard]] bool HasLeft() const { return m_isLeaving && m_packetsToLeave == 0; }

    /// It has sent everything.
    void End();

    void Close() const { m_onEvent({PlayerEvent::Kind::Gone, {}, {}}); }

private:
    void Encode(const std::vector<float>& sound, float target);
    void Write(std::size_t place, float sample);

    const PlayerOrder m_order;
    const Zone m_zone;
    const std::int64_t m_firstPacket;
    RtpStream m_rtp;
    IRoomPlayer::OnEvent m_onEvent;
    std::atomic<float> m_gain;
    float m_currentGain = 0;
    std::vector<std::uint8_t> m_payload;
    const std::vector<std::uint8_t> m_silence;
    bool m_hasBegun = false;
    bool m_isLeaving = false;
    bool m_isTroubled = false;
    std::int64_t m_packetsToLeave = 1 + kSilentPackets;
};

} // namespace controller::audio
