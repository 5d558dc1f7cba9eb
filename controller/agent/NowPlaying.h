#pragma once

#include "controller/agent/Timers.h"
#include "controller/driver/DriverOnly.h"
#include "controller/events/EventFeed.h"

#include <chrono>
#include <cstdint>
#include <optional>

namespace controller {

/// What the agent is playing, told from outside: an announcement starts when its event is fired, and it is
/// over when the agent has dealt with a poll without firing another event and no timer of an announcement
/// runs any more. That is when, and only when, the agent itself lets go of it. Driver thread only.
class NowPlaying {
public:
    struct Announcement {
        std::uint32_t id = 0;
        std::uint64_t show = 0; ///< counts what has been played, from 1; another number is another playing
        std::chrono::system_clock::time_point since;
    };

    /// Both are borrowed for life.
    NowPlaying(Timers& timers, EventFeed& feed) : m_timers(timers), m_feed(feed) {}

    /// The driver has fired the event with the id of an announcement.
    void EventFired(std::uint32_t announcement);

    /// The driver has dealt with one of its timers.
    void DriverTimerDone();

    /// The agent is gone: what was playing is over.
    void AgentStopped() { End(); }

    [[nodiscard]] const std::optional<Announcement>& Current() const noexcept { return m_current; }

private:
    void End();

    Timers& m_timers;
    EventFeed& m_feed;
    std::optional<Announcement> m_current;
    std::uint64_t m_lastShow = 0;
    bool m_hasPollStartedAnother = false;
    DriverOnly m_driverOnly;
};

} // namespace controller
