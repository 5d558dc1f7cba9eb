#include "controller/events/EventFeed.h"

#include <utility>

namespace controller {

EventFeed::Subscription::Subscription(Subscription&& other) noexcept
    : m_feed(std::exchange(other.m_feed, nullptr))
    , m_id(other.m_id) {}

EventFeed::Subscription& EventFeed::Subscription::operator=(Subscription&& other) noexcept {
    std::swap(m_feed, other.m_feed);
    std::swap(m_id, other.m_id);
    return *this;
}

EventFeed::Subscription::~Subscription() {
    if (m_feed != nullptr)
        m_feed->m_subscribers.erase(m_id);
}

EventFeed::Subscription EventFeed::Subscribe(Subscriber subscriber) {
    m_driverOnly.Assert();
    m_subscribers.emplace(++m_lastId, std::move(subscriber));
    return {*this, m_lastId};
}

void EventFeed::Publish(EventData data) {
    m_driverOnly.Assert();
    m_waiting.push_back({++m_lastNumber, std::chrono::system_clock::now(), std::move(data)});
    if (m_isDelivering)
        return;
    m_isDelivering = true;
    for (std::size_t next = 0; next < m_waiting.size(); ++next) {
        const Event event = std::move(m_waiting[next]);
        Deliver(event);
    }
    m_waiting.clear();
    m_isDelivering = false;
}

void EventFeed::Deliver(const Event& event) {
    // By id, for a subscriber may end any subscription while it is told; new ones start with the next event.
    const std::uint64_t newest = m_lastId;
    auto place = m_subscribers.begin();
    while (place != m_subscribers.end() && place->first <= newest) {
        const std::uint64_t id = place->first;
        const Subscriber subscriber = place->second;
        subscriber(event);
        place = m_subscribers.upper_bound(id);
    }
}

} // namespace controller
