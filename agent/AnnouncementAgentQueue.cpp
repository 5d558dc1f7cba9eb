#include "agent/AnnouncementAgent.h"

#include <algorithm>

namespace {

constexpr std::uint32_t kPollMilliseconds = 1000;

} // namespace

void AnnouncementAgent::OnCmdExecuteAnnouncement(const ICmdMessage& message) {
    ExecuteAnnouncement(message.GetParamAsULong("id"));
}

void AnnouncementAgent::OnCmdAnnouncementDismissed() {
    if (const auto current = m_currentAnnouncement)
        current->Dismiss();
}

void AnnouncementAgent::ExecuteAnnouncement(std::uint32_t id) {
    if (id != 0) {
        if (m_currentAnnouncement) {
            if (m_currentAnnouncement->GetID() != id && !IsAnnouncementInQueue(id))
                m_queue.push_back(id);
            return;
        }
        m_currentAnnouncement = GetAnnouncementFromID(id);
    }
    while (!m_currentAnnouncement) {
        if (m_queue.empty())
            return;
        m_currentAnnouncement = GetAnnouncementFromID(m_queue.front());
        m_queue.pop_front();
    }
    // Held here as well: what the host does during these calls may release the current announcement.
    const auto current = m_currentAnnouncement;
    m_pollTimerId = AddTimer(kPollMilliseconds, Milliseconds);
    FireEvent(current->GetID());
    current->Execute();
}

void AnnouncementAgent::OnTimerExpired(std::uint32_t /*timerId*/, std::int32_t /*context*/) {
    m_pollTimerId = 0;
    if (m_currentAnnouncement && m_currentAnnouncement->IsComplete()) {
        m_currentAnnouncement.reset();
        ExecuteAnnouncement(0);
        return;
    }
    // Also with nothing playing: a surplus poll goes on for as long as the agent is idle.
    m_pollTimerId = AddTimer(kPollMilliseconds, Milliseconds);
}

bool AnnouncementAgent::IsAnnouncementInQueue(std::uint32_t id) const {
    return std::find(m_queue.begin(), m_queue.end(), id) != m_queue.end();
}

boost::shared_ptr<Announcement> AnnouncementAgent::GetAnnouncementFromID(std::uint32_t id) const {
    if (id == 0)
        return {};
    const auto found = m_announcements.find(id);
    return found != m_announcements.end() ? found->second : boost::shared_ptr<Announcement>();
}

void AnnouncementAgent::AudioStreamCreated() {
    if (const auto current = m_currentAnnouncement)
        current->AudioStreamCreated();
}

void AnnouncementAgent::AudioAnnouncementComplete() {
    if (const auto current = m_currentAnnouncement)
        current->AudioAnnouncementComplete();
}

bool AnnouncementAgent::IsRoomInCurrentAnnouncement(std::uint32_t roomId) {
    return m_currentAnnouncement && m_currentAnnouncement->IsRoomInCurrentAnnouncement(roomId);
}
