#pragma once

#include "controller/events/EventFeed.h"

#include <string>
#include <vector>

namespace controller {

/// Collects what a feed says, each event as one short text.
class EventTexts {
public:
    explicit EventTexts(EventFeed& feed);

    /// What was said since the last call.
    [[nodiscard]] std::vector<std::string> Take();

private:
    std::vector<std::string> m_texts;
    EventFeed::Subscription m_subscription;
};

} // namespace controller
