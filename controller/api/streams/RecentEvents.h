#pragma once

#include "controller/events/EventFeed.h"

#include <cstddef>
#include <deque>
#include <string>

namespace controller {

/// The last events, for those who come too late to have heard them. Driver thread only.
class RecentEvents {
public:
    /// So many are kept.
    static constexpr std::size_t kMost = 1000;

    /// `feed` is borrowed for life.
    explicit RecentEvents(EventFeed& feed);
    RecentEvents(const RecentEvents&) = delete;
    RecentEvents& operator=(const RecentEvents&) = delete;

    /// The last `limit` of them, oldest first: `{"events": [...]}` as JSON text, each as a socket is sent it.
    [[nodiscard]] std::string Last(std::size_t limit) const;

private:
    std::deque<Event> m_events;
    EventFeed::Subscription m_subscription;
};

} // namespace controller
