#include "controller/api/streams/RecentEvents.h"

#include "controller/api/json/EventJson.h"

#include <algorithm>

namespace controller {

RecentEvents::RecentEvents(EventFeed& feed)
    : m_subscription(feed.Subscribe([this](const Event& event) {
        m_events.push_back(event);
        // Long after, it is not as it was any more.
        if (auto* const stored = std::get_if<events::AnnouncementStored>(&m_events.back().data))
            stored->now.reset();
        if (m_events.size() > kMost)
            m_events.pop_front();
    })) {}

std::string RecentEvents::Last(std::size_t limit) const {
    const auto first = m_events.end() - static_cast<std::ptrdiff_t>(std::min(limit, m_events.size()));
    return fields::ToText(view::EventList{{first, m_events.end()}});
}

} // namespace controller
