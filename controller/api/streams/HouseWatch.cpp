#include "controller/api/streams/HouseWatch.h"

#include <algorithm>

namespace controller {

HouseWatch::HouseWatch(EventFeed& feed)
    : m_subscription(feed.Subscribe([this](const Event& event) { Take(event); })) {}

std::vector<std::uint32_t> HouseWatch::Waiting() const {
    // With nothing playing, nothing waits in the agent: it takes the next one, or has found that none of
    // them exists.
    std::vector<std::uint32_t> waiting;
    if (m_playing)
        waiting.assign(m_waiting.begin(), m_waiting.end());
    for (const Queued& one : m_queue)
        waiting.push_back(one.announcement);
    return waiting;
}

std::string HouseWatch::Trouble(std::uint32_t room) const {
    const auto place = m_trouble.find(room);
    if (place != m_trouble.end())
        return place->second;
    const auto health = m_health.find(room);
    return health != m_health.end() ? health->second.reason : "";
}

events::RoomHealth HouseWatch::Health(std::uint32_t room) const {
    const auto place = m_health.find(room);
    return place != m_health.end() ? place->second.health : events::RoomHealth::Unknown;
}

/// What is known now takes the place of what was then.
void HouseWatch::Changed(const events::RoomHealthChanged& changed) {
    m_health[changed.room] = changed;
    m_trouble.erase(changed.room);
}

void HouseWatch::Asked(const events::PlayAsked& asked) {
    if (asked.entry != 0)
        return; // the agent is not asked yet
    if (!m_playing) {
        m_waiting.clear();
        return;
    }
    const std::uint32_t announcement = asked.announcement;
    const bool isKnown = announcement == 0 || announcement == m_playing->announcement ||
                         std::find(m_waiting.begin(), m_waiting.end(), announcement) != m_waiting.end();
    if (!isKnown)
        m_waiting.push_back(announcement);
}

void HouseWatch::Started(std::uint32_t announcement, Time time) {
    m_playing = Playing{announcement, time};
    m_trouble.clear();
    ++m_counts.announcements;
    // Those that waited before it have been skipped.
    const auto place = std::find(m_waiting.begin(), m_waiting.end(), announcement);
    if (place != m_waiting.end())
        m_waiting.erase(m_waiting.begin(), std::next(place));
}

/// The agent skips it when its turn comes.
void HouseWatch::Removed(std::uint32_t announcement) {
    m_waiting.erase(std::remove(m_waiting.begin(), m_waiting.end(), announcement), m_waiting.end());
}

void HouseWatch::Take(const Event& event) {
    using namespace events;
    if (const auto* asked = std::get_if<PlayAsked>(&event.data))
        Asked(*asked);
    else if (const auto* queue = std::get_if<QueueChanged>(&event.data))
        m_queue = queue->queue;
    else if (const auto* started = std::get_if<AnnouncementStarted>(&event.data))
        Started(started->announcement, event.time);
    else if (std::holds_alternative<AnnouncementEnded>(event.data))
        m_playing.reset();
    else if (const auto* removed = std::get_if<AnnouncementRemoved>(&event.data))
        Removed(removed->announcement);
    else if (const auto* sound = std::get_if<SoundStarted>(&event.data))
        m_sound = Sound{sound->file, event.time};
    else if (std::holds_alternative<SoundEnded>(event.data))
        m_sound.reset();
    else if (const auto* woken = std::get_if<ScreensWoken>(&event.data))
        m_awake.insert(woken->room);
    else if (const auto* rested = std::get_if<ScreensRested>(&event.data))
        m_awake.erase(rested->room);
    else if (const auto* failed = std::get_if<RoomOutputFailed>(&event.data)) {
        m_trouble[failed->room] = failed->reason;
        ++m_counts.outputFailures;
    } else if (const auto* health = std::get_if<RoomHealthChanged>(&event.data))
        Changed(*health);
    else if (std::holds_alternative<PopupShown>(event.data))
        ++m_counts.popups;
    else if (std::holds_alternative<StateSaved>(event.data))
        m_stateError.reset();
    else if (const auto* notSaved = std::get_if<StateNotSaved>(&event.data))
        m_stateError = notSaved->reason;
}

} // namespace controller
