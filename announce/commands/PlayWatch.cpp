#include "announce/commands/PlayWatch.h"

#include "announce/basics/Failure.h"

#include <utility>

PlayWatch::PlayWatch(ApiClient& client, std::uint32_t announcement)
    : m_client(client)
    , m_announcement(announcement)
    , m_events(client.Events()) {
    const Json playing = m_events.Next().at("data").at("status").at("playing");
    m_isPlaying = !playing.is_null() && playing.at("announcement") == m_announcement;
}

PlayWatch::End PlayWatch::Play() {
    (void)m_client.Post("/api/announcements/" + std::to_string(m_announcement) + "/play");
    return Follow();
}

Json PlayWatch::Say(const Json& order) {
    Json said = m_client.Post("/api/say", order);
    m_announcement = said.at("announcement");
    return said;
}

PlayWatch::End PlayWatch::Follow() {
    while (!HasEnded(m_events.Next())) {
    }
    if (m_isRemoved && !m_isPlaying)
        return {"removed", false};
    return OutcomeFromHistory();
}

bool PlayWatch::HasEnded(const Json& event) {
    const Json& data = event.contains("data") ? event.at("data") : event;
    const std::string type = event.at("type");
    const bool isOurs = data.contains("announcement") && data.at("announcement") == m_announcement;
    if (type == "announcement_ended" && isOurs && m_isPlaying) {
        // One that ended before it was asked for again is not the one that is waited for.
        if (m_isAsked)
            return true;
        m_isPlaying = false;
    }
    if (type == "play_asked" && isOurs)
        m_isAsked = true;
    if (type == "announcement_started" && isOurs)
        m_isPlaying = true;
    if (type == "announcement_removed" && isOurs)
        m_isRemoved = true;
    if (type == "queue_changed")
        LookAtQueue(data.at("queue"));
    return m_isRemoved && !m_isPlaying && m_isAsked;
}

/// What waits no more and has not begun was taken back.
void PlayWatch::LookAtQueue(const Json& queue) {
    const bool wasWaiting = std::exchange(m_isWaiting, false);
    for (const Json& one : queue)
        m_isWaiting = m_isWaiting || one.at("announcement") == m_announcement;
    m_isRemoved = m_isRemoved || (wasWaiting && !m_isWaiting && !m_isPlaying);
}

PlayWatch::End PlayWatch::OutcomeFromHistory() {
    const Json history = m_client.Get("/api/history?limit=1000");
    for (const Json& entry : history.at("history")) {
        if (entry.at("announcement") != m_announcement)
            continue;
        const std::string outcome = entry.at("outcome");
        return {outcome, outcome == "ended"};
    }
    throw Failure(ExitStatus::Failed, "announcement " + std::to_string(m_announcement) +
                                          " has ended, and the history does not say how");
}
