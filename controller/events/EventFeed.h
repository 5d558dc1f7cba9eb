#pragma once

#include "controller/driver/DriverOnly.h"
#include "controller/events/Event.h"

#include <cstdint>
#include <functional>
#include <map>
#include <vector>

namespace controller {

/// Tells everybody who subscribed what happens, in order. Driver thread only. The feed keeps nothing: who
/// joins late asks the parts of the controller for their present state.
class EventFeed {
public:
    using Subscriber = std::function<void(const Event&)>;

    /// Ends its subscription when it dies; must die before the feed.
    class Subscription {
    public:
        Subscription() = default;
        Subscription(EventFeed& feed, std::uint64_t id) : m_feed(&feed), m_id(id) {}
        Subscription(const Subscription&) = delete;
        Subscription& operator=(const Subscription&) = delete;
        Subscription(Subscription&& other) noexcept;
        Subscription& operator=(Subscription&& other) noexcept;
        ~Subscription();

    private:
        EventFeed* m_feed = nullptr;
        std::uint64_t m_id = 0;
    };

    /// A subscriber may publish, subscribe and end subscriptions, its own too, while it is told. What a
    /// subscriber publishes reaches everybody after the present event has.
    [[nodiscard]] Subscription Subscribe(Subscriber subscriber);

    void Publish(EventData data);

    /// The number of the last event; 0 before the first.
    [[nodiscard]] std::uint64_t LastNumber() const noexcept { return m_lastNumber; }

private:
    void Deliver(const Event& event);

    std::map<std::uint64_t, Subscriber> m_subscribers;
    std::uint64_t m_lastId = 0;
    std::uint64_t m_lastNumber = 0;
    std::vector<Event> m_waiting;
    bool m_isDelivering = false;
    DriverOnly m_driverOnly;
};

} // namespace controller
