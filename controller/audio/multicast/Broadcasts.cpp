#include "controller/audio/multicast/Broadcasts.h"

#include <algorithm>

namespace controller::audio {

Broadcast* Broadcasts::Find(const ZonePointer& zone) {
    const auto place = std::find_if(m_broadcasts.begin(), m_broadcasts.end(), [&](const auto& broadcast) {
        return broadcast->GetTimeline() == zone->GetTimeline();
    });
    return place != m_broadcasts.end() ? place->get() : nullptr;
}

void Broadcasts::Add(const ZonePointer& zone) {
    Broadcast* broadcast = Find(zone);
    if (broadcast == nullptr) {
        zone->GetTimeline()->OnPlaced(m_wake);
        broadcast = m_broadcasts.emplace_back(std::make_unique<Broadcast>(zone->GetTimeline())).get();
    }
    broadcast->Add(zone);
}

void Broadcasts::Stop(const ZonePointer& zone) {
    if (Broadcast* broadcast = Find(zone))
        broadcast->Stop(zone);
    else
        zone->Close();
}

void Broadcasts::Abort(const ZonePointer& zone) {
    if (Broadcast* broadcast = Find(zone))
        broadcast->Abort(zone);
    else
        zone->Close();
}

void Broadcasts::StopAll() {
    for (const auto& broadcast : m_broadcasts)
        broadcast->StopAll();
}

std::optional<Broadcasts::Clock::time_point> Broadcasts::Send(Clock::time_point now) {
    std::optional<Clock::time_point> next;
    for (const auto& broadcast : m_broadcasts) {
        auto due = broadcast->Due(now);
        for (; due && *due <= now; due = broadcast->Due(now))
            broadcast->SendNext(m_sink);
        if (due && (!next || *due < *next))
            next = due;
    }
    const bool hadSome = !m_broadcasts.empty();
    m_broadcasts.erase(std::remove_if(m_broadcasts.begin(), m_broadcasts.end(),
                                      [](const auto& broadcast) { return broadcast->IsEmpty(); }),
                       m_broadcasts.end());
    if (hadSome && m_broadcasts.empty())
        m_sink.Rest();
    return next;
}

} // namespace controller::audio
