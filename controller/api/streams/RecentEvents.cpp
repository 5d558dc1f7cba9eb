#include "controller/api/streams/RecentEvents.h"

#include "controller/api/json/EventJson.h"

#include <algorithm>

namespace controller {

RecentEvents::RecentEvents(EventFeed& feed)
    : m_subscription(feed.Subscribe([this](const Event& event) {
        if (event_json::TypeOf(event) == nullptr)
            return;
        m_events.push_back(event);
        if (m_events.size() > kMost)
            m_events.pop_front();
    })) {}

std::string RecentEvents::Last(std::size_t limit) const {
    std::string list;
    for (std::size_t index = m_events.size() - std::min(limit, m_events.size()); index < m_events.size();
         ++index) {
        const Event& event = m_events[index];
        list += list.empty() ? "" : ",";
        list += event_json::Message(event, event_json::TypeOf(event), event_json::DataOf(event));
    }
    return "{\"events\":[" + list + "]}";
}

} // namespace controller
