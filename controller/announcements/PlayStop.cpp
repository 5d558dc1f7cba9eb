#include "controller/announcements/PlayStop.h"

#include <utility>

namespace controller {

PlayStop::PlayStop(Parts parts)
    : m_parts(parts)
    , m_dismissal(parts.scheduler, "the popup of what was stopped") {}

bool PlayStop::Stop() {
    m_driverOnly.Assert();
    const auto& current = m_parts.playing.Current();
    if (!current)
        return m_parts.queue.StopPreparing();
    if (std::exchange(m_stopped, current->show) != current->show)
        m_parts.feed.Publish(events::AnnouncementStopped{current->id});
    m_parts.audio.Stop();
    Dismiss();
    return true;
}

bool PlayStop::RefusePopup() {
    m_driverOnly.Assert();
    const auto& current = m_parts.playing.Current();
    if (!current || current->show != m_stopped)
        return false;
    // Not now: the agent is in the middle of showing it.
    m_dismissal.Start({}, [this] { Dismiss(); });
    return true;
}

void PlayStop::Dismiss() {
    m_parts.announcements.Dismiss([](const Announcements::Outcome& /*outcome*/) {
        // What the agent may throw stands in the log.
    });
}

} // namespace controller
