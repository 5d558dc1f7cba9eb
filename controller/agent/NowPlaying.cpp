#include "controller/agent/NowPlaying.h"

#include <utility>

namespace controller {

void NowPlaying::EventFired(std::uint32_t announcement) {
    m_driverOnly.Assert();
    // Only a poll goes on to another announcement; any other repetition plays the present one again.
    m_hasPollStartedAnother = m_timers.IsInDriverTimer();
    if (m_current && !m_hasPollStartedAnother)
        return;
    End();
    m_current = Announcement{announcement, ++m_lastShow, std::chrono::system_clock::now()};
    m_feed.Publish(events::AnnouncementStarted{announcement});
}

void NowPlaying::DriverTimerDone() {
    m_driverOnly.Assert();
    if (!std::exchange(m_hasPollStartedAnother, false) && m_timers.AnnouncementTimers() == 0)
        End();
}

void NowPlaying::End() {
    if (const auto ended = std::exchange(m_current, std::nullopt))
        m_feed.Publish(events::AnnouncementEnded{ended->id});
}

} // namespace controller
