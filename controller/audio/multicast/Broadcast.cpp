#include "controller/audio/multicast/Broadcast.h"

#include <algorithm>
#include <ratio>
#include <utility>

namespace controller::audio {

namespace {

std::int64_t PacketsFor(std::int64_t frames) {
    return (frames + kPacketFrames - 1) / kPacketFrames;
}

} // namespace

Broadcast::Broadcast(std::shared_ptr<Timeline> timeline)
    : m_timeline(std::move(timeline))
    , m_isLate(m_timeline->HasClip())
    , m_sounds{Sound{Decimator(kZoneCodecs[0].factor), std::vector<float>(kZoneCodecs[0].Samples())},
               Sound{Decimator(kZoneCodecs[1].factor), std::vector<float>(kZoneCodecs[1].Samples())}} {
    static_assert(kZoneCodecs.size() == 2);
}

void Broadcast::Add(const ZonePointer& zone) {
    const auto place =
        std::upper_bound(m_zones.begin(), m_zones.end(), zone, [](const auto& one, const auto& other) {
            return one->GetZone().route.Key() < other->GetZone().route.Key();
        });
    m_zones.insert(place, zone);
    zone->Open();
}

void Broadcast::Stop(const ZonePointer& zone) {
    const auto place = std::find(m_zones.begin(), m_zones.end(), zone);
    if (place != m_zones.end() && zone->Leave())
        return;
    Abort(zone);
}

void Broadcast::StopAll() {
    const auto zones = m_zones;
    for (const ZonePointer& zone : zones)
        Stop(zone);
}

void Broadcast::Abort(const ZonePointer& zone) {
    m_zones.erase(std::remove(m_zones.begin(), m_zones.end(), zone), m_zones.end());
    zone->Close();
}

std::optional<Broadcast::Clock::time_point> Broadcast::Due(Clock::time_point now) {
    if (m_zones.empty())
        return std::nullopt;
    if (!m_clip) {
        m_clip = m_timeline->Placed();
        if (!m_clip)
            return std::nullopt;
        m_next = FirstPacket(now);
    }
    return m_timeline->TimeAt(m_clip->start + m_next * kPacketFrames);
}

/// Zones that come when the clip has begun go on with the present, as all rooms do.
std::int64_t Broadcast::FirstPacket(Clock::time_point now) const {
    using Packets = std::chrono::duration<std::int64_t, std::ratio<kPacketFrames, kRate>>;
    const auto present = std::chrono::floor<Packets>(now - m_timeline->TimeAt(m_clip->start)).count();
    std::int64_t first = 0;
    for (const ZonePointer& zone : m_zones)
        first = std::min(first, zone->FirstPacket());
    return m_isLate ? std::max(first, present) : first;
}

void Broadcast::SendNext(IPacketSink& sink) {
    if (!m_fadeFrom && m_timeline->Placed()->isFadingOut)
        m_fadeFrom = m_next;
    if (HasEnded()) {
        End();
        return;
    }
    for (Sound& sound : m_sounds)
        sound.isMade = false;
    m_packets.clear();
    m_senders.clear();
    for (const ZonePointer& zone : m_zones) {
        if (m_next < zone->FirstPacket())
            continue;
        m_packets.push_back(zone->Next(SoundFor(*zone->GetZone().codec)));
        m_senders.push_back(zone.get());
    }
    sink.Send(m_packets);
    ++m_next;
    for (std::size_t index = 0; index < m_packets.size(); ++index)
        m_senders[index]->Sent(m_packets[index].error, m_clip->start + m_next * kPacketFrames);
    DropThoseThatLeft();
}

bool Broadcast::HasEnded() const {
    // Where nothing but silence has been heard there is nothing to fade.
    if (m_fadeFrom && (*m_fadeFrom <= 0 || m_next >= *m_fadeFrom + PacketsFor(kFadeFrames) + kSilentPackets))
        return true;
    const auto total = m_clip->clip->TotalFrames();
    return total && m_next >= PacketsFor(*total) + kSilentPackets;
}

const std::vector<float>* Broadcast::SoundFor(const ZoneCodec& codec) {
    const std::int64_t position = m_next * kPacketFrames;
    const auto total = m_clip->clip->TotalFrames();
    const bool hasFaded = m_fadeFrom && m_next >= *m_fadeFrom + PacketsFor(kFadeFrames);
    if (position < 0 || hasFaded || (total && position >= *total))
        return nullptr;
    const auto index = static_cast<std::size_t>(&codec - kZoneCodecs.data());
    if (!std::exchange(m_sounds[index].isMade, true))
        MakeSound(index, position);
    return &m_sounds[index].samples;
}

void Broadcast::MakeSound(std::size_t codec, std::int64_t position) {
    auto& [decimator, samples, isMade] = m_sounds[codec];
    const std::int64_t frames = kPacketFrames + 2 * decimator.Reach();
    m_frames.resize(static_cast<std::size_t>(frames * kChannels));
    m_clip->clip->Read(position - decimator.Reach(), m_frames.data(), frames);
    decimator.Run(m_frames, samples);
    if (!m_fadeFrom)
        return;
    std::int64_t passed = position - *m_fadeFrom * kPacketFrames;
    for (float& sample : samples) {
        passed += kZoneCodecs[codec].factor;
        sample *= static_cast<float>(std::max<std::int64_t>(0, kFadeFrames - passed)) / kFadeFrames;
    }
}

void Broadcast::End() {
    const auto zones = std::exchange(m_zones, {});
    for (const ZonePointer& zone : zones) {
        if (zone->IsLeaving())
            zone->Close();
        else
            zone->End();
    }
}

void Broadcast::DropThoseThatLeft() {
    const auto left = std::stable_partition(m_zones.begin(), m_zones.end(),
                                            [](const ZonePointer& zone) { return !zone->HasLeft(); });
    std::for_each(left, m_zones.end(), [](const ZonePointer& zone) { zone->Close(); });
    m_zones.erase(left, m_zones.end());
}

} // namespace controller::audio
