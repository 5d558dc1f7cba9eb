#include "controller/announcements/HistoryRecorder.h"

#include "controller/state/UtcText.h"

#include <algorithm>
#include <utility>

namespace controller {

namespace {

void AddOnce(std::vector<std::uint32_t>& ids, std::uint32_t id) {
    if (std::find(ids.begin(), ids.end(), id) == ids.end())
        ids.push_back(id);
}

} // namespace

HistoryRecorder::HistoryRecorder(EventFeed& feed, Parts parts)
    : m_parts(std::move(parts))
    , m_subscription(feed.Subscribe([this](const Event& event) { Take(event); })) {}

void HistoryRecorder::Take(const Event& event) {
    if (const auto* started = std::get_if<events::AnnouncementStarted>(&event.data)) {
        m_current = HistoryEntry{};
        m_current->announcement = started->announcement;
        m_current->name = m_parts.nameOf(started->announcement);
        m_current->startedAt = UtcText(event.time);
        m_current->outcome = "ended";
        return;
    }
    if (!m_current)
        return;
    if (const auto* room = std::get_if<events::RoomSetUp>(&event.data))
        AddOnce(m_current->rooms, room->room);
    else if (const auto* popup = std::get_if<events::PopupShown>(&event.data))
        AddOnce(m_current->navigators, popup->navigator);
    else if (const auto* sound = std::get_if<events::SoundStarted>(&event.data))
        m_current->file = sound->file;
    else if (std::holds_alternative<events::AnnouncementStopped>(event.data))
        // What failed before has not come to more by being stopped.
        m_current->outcome = m_current->outcome.rfind("failed", 0) == 0 ? m_current->outcome : "stopped";
    else if (const auto* hidden = std::get_if<events::PopupHidden>(&event.data)) {
        if (hidden->why == events::PopupEnd::Dismissed && m_current->outcome == "ended")
            m_current->outcome = "dismissed";
    } else if (const auto* end = std::get_if<events::SoundEnded>(&event.data)) {
        m_current->file = end->file;
        if (!end->error.empty())
            m_current->outcome = "failed: " + end->error;
    } else if (std::holds_alternative<events::AnnouncementEnded>(event.data)) {
        Finish(event);
    }
}

void HistoryRecorder::Finish(const Event& event) {
    HistoryEntry entry = std::move(*std::exchange(m_current, std::nullopt));
    entry.endedAt = UtcText(event.time);
    if (m_parts.isEnding())
        entry.outcome = "interrupted";
    m_parts.write(entry);
}

} // namespace controller
