#pragma once

#include "controller/events/EventFeed.h"
#include "controller/state/StateDatabase.h"

#include <functional>
#include <optional>
#include <string>

namespace controller {

/// Writes down what is played: when, in which rooms, on which screens, and how it ended. Driver thread only.
class HistoryRecorder {
public:
    struct Parts {
        std::function<std::string(std::uint32_t announcement)> nameOf;
        std::function<void(const HistoryEntry&)> write;
        std::function<bool()> isEnding; ///< the controller ends, and what plays does not come to its own end
    };

    /// `feed` is borrowed for life.
    HistoryRecorder(EventFeed& feed, Parts parts);

private:
    void Take(const Event& event);
    void Finish(const Event& event);

    Parts m_parts;
    std::optional<HistoryEntry> m_current;
    EventFeed::Subscription m_subscription;
};

} // namespace controller
