#pragma once

#include "announce/client/ApiClient.h"

#include <cstdint>
#include <optional>
#include <string>

/// Plays an announcement and follows it to its end.
class PlayWatch {
public:
    struct End {
        std::string outcome; ///< "ended", "dismissed", "stopped", "failed: WHY", "interrupted", "removed"
        bool isComplete = false;
    };

    /// Listens from now on. `client` is borrowed for life.
    PlayWatch(ApiClient& client, std::uint32_t announcement);

    /// Asks for it and waits for its end. Throws Failure, NoConnection too.
    [[nodiscard]] End Play();

private:
    [[nodiscard]] bool HasEnded(const Json& event);
    [[nodiscard]] End OutcomeFromHistory();

    ApiClient& m_client;
    const std::uint32_t m_announcement;
    EventStream m_events;
    bool m_isPlaying = false;
    bool m_isRemoved = false;
    bool m_isAsked = false;
};
