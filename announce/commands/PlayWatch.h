#pragma once

#include "announce/client/ApiClient.h"

#include <cstdint>
#include <optional>
#include <string>

/// Plays an announcement, or says something, and follows it to its end.
class PlayWatch {
public:
    struct End {
        std::string outcome; ///< "ended", "dismissed", "stopped", "failed: WHY", "interrupted", "removed"
        bool isComplete = false;
    };

    /// Listens from now on. `client` is borrowed for life.
    PlayWatch(ApiClient& client, std::uint32_t announcement);

    explicit PlayWatch(ApiClient& client) : PlayWatch(client, 0) {}

    /// Asks for it and waits for its end. Throws Failure, NoConnection too.
    [[nodiscard]] End Play();

    /// Has it said, and gives the reply; then its end can be waited for. Both throw as Play does.
    [[nodiscard]] Json Say(const Json& order);
    [[nodiscard]] End Follow();

private:
    [[nodiscard]] bool HasEnded(const Json& event);
    void LookAtQueue(const Json& queue);
    [[nodiscard]] End OutcomeFromHistory();

    ApiClient& m_client;
    std::uint32_t m_announcement;
    EventStream m_events;
    bool m_isPlaying = false;
    bool m_isRemoved = false;
    bool m_isAsked = false;
    bool m_isWaiting = false; ///< in the controller's queue
};
