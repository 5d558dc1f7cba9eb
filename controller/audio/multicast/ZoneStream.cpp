#include "controller/audio/multicast/ZoneStream.h"

#include "controller/audio/Timeline.h"
#include "controller/audio/VolumeLaw.h"
#include "controller/audio/multicast/MuLaw.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace controller::audio {

namespace {

/// A whole number of packets, so that one of them begins with the clip.
std::int64_t PacketsOf(std::chrono::milliseconds time) {
    return (time + kPacketTime - std::chrono::milliseconds(1)) / kPacketTime;
}

std::int16_t SampleOf(float value) {
    return static_cast<std::int16_t>(std::lrint(std::clamp(value * 32768.0F, -32768.0F, 32767.0F)));
}

/// The sender holds the stream; if that held the sender in turn, neither would ever go.
PlayerOrder WithoutSender(PlayerOrder order) {
    order.context.packets = nullptr;
    return order;
}

} // namespace

ZoneStream::ZoneStream(PlayerOrder order, Zone zone, const RtpStream::Start& start)
    : m_order(WithoutSender(std::move(order)))
    , m_zone(std::move(zone))
    , m_firstPacket(-PacketsOf(m_order.leadSilence))
    , m_rtp(m_zone.codec->payloadType, start)
    , m_gain(static_cast<float>(Gain(m_order.volume)))
    , m_payload(m_zone.codec->PayloadBytes())
    , m_silence(m_payload.size(), m_zone.codec->sampleBytes == 1 ? MuLawOf(0) : std::uint8_t{0}) {}

void ZoneStream::SetVolume(unsigned volume) {
    m_gain = static_cast<float>(Gain(volume));
}

void ZoneStream::Open() {
    if (!m_order.timeline->SetRunning(*m_order.slot, true))
        m_onEvent({PlayerEvent::Kind::Late, {}, {}});
}

OutgoingPacket ZoneStream::Next(const std::vector<float>* sound) {
    OutgoingPacket packet{&m_zone, m_rtp.Next(static_cast<std::uint32_t>(m_zone.codec->Samples())),
                          &m_silence};
    const float target = m_isLeaving ? 0.0F : m_gain.load();
    const bool isSilent = sound == nullptr || (target == 0.0F && m_currentGain == 0.0F);
    if (!std::exchange(m_hasBegun, true) || isSilent)
        m_currentGain = target; // Nothing can click.
    if (!isSilent) {
        Encode(*sound, target);
        packet.payload = &m_payload;
    }
    if (m_isLeaving)
        --m_packetsToLeave;
    return packet;
}

/// A change of volume is spread over a packet: at once it would click.
void ZoneStream::Encode(const std::vector<float>& sound, float target) {
    const float step = (target - m_currentGain) / static_cast<float>(sound.size());
    for (std::size_t place = 0; place + 1 < sound.size(); ++place)
        Write(place, sound[place] * (m_currentGain + step * static_cast<float>(place + 1)));
    Write(sound.size() - 1, sound.back() * target);
    m_currentGain = target;
}

void ZoneStream::Write(std::size_t place, float sample) {
    const std::int16_t value = SampleOf(sample);
    if (m_zone.codec->sampleBytes == 1) {
        m_payload[place] = MuLawOf(value);
        return;
    }
    const auto bits = static_cast<std::uint16_t>(value);
    m_payload[2 * place] = static_cast<std::uint8_t>(bits >> 8U);
    m_payload[2 * place + 1] = static_cast<std::uint8_t>(bits & 0xffU);
}

void ZoneStream::Sent(int error, std::int64_t next) {
    m_order.timeline->SetGiven(*m_order.slot, next);
    // It goes on: what comes after the trouble is heard.
    if (error != 0 && !std::exchange(m_isTroubled, true))
        m_order.context.silent(NothingIsSentTo(m_zone, error));
}

bool ZoneStream::Leave() {
    m_isLeaving = true;
    return m_hasBegun;
}

void ZoneStream::End() {
    m_order.timeline->SetDone(*m_order.slot);
    m_onEvent({PlayerEvent::Kind::Ended, {}, {}});
}

} // namespace controller::audio
