#include "announce/commands/PlayWatch.h"

#include "announce/basics/Failure.h"

PlayWatch::PlayWatch(ApiClient& client, std::uint32_t announcement)
    : m_client(client)
    , m_announcement(announcement)
    , m_events(client.Events()) {
    const Json playing = m_events.Next().at("data").at("status").at("playing");
    m_isPlaying = !playing.is_null() && playing.at("announcement") == m_announcement;
}

PlayWatch::End PlayWatch::Play() {
    (void)m_client.Post("/api/announcements/" + std::to_string(m_announcement) + "/play");
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
    return m_isRemoved && !m_isPlaying && m_isAsked;
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
