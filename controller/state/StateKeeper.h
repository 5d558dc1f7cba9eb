#pragma once

#include "controller/driver/Alarm.h"
#include "controller/driver/Log.h"
#include "controller/events/EventFeed.h"
#include "controller/state/StateStore.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace controller {

/// Keeps the agent's state on the disk: compares it with what was written last, and writes what differs.
/// Driver thread only.
class StateKeeper {
public:
    /// How long a change that nobody waits for may take to be noticed.
    static constexpr std::chrono::seconds kSoon{2};

    struct Parts {
        std::function<std::string()> state; ///< the agent's present state; may throw
        /// The element of one announcement in it; empty when there is none; may throw.
        std::function<std::string(std::uint32_t announcement)> announcement;
        IAgentStateStore& store;
        IScheduler& scheduler;
        EventFeed& feed;
        Log& log;
    };

    /// Told, with the reason when it is not so, that the state stands on the disk.
    using Done = std::function<void(const std::string& error)>;

    /// `stored` is the text that the disk holds.
    StateKeeper(Parts parts, std::string stored);

    /// Makes sure that the agent's present state stands on the disk. A failure is told, and tried again by
    /// the store.
    void Save(Done done);

    /// The same, when nothing but this announcement can have changed: asking for all of them takes long when
    /// there are many.
    void Save(std::uint32_t announcement, Done done);

    /// Looks a little later, once, whether something is to be saved; of this announcement alone, or of all.
    void SaveSoon(std::uint32_t announcement);
    void SaveSoon();

private:
    using Text = std::shared_ptr<const std::string>;

    [[nodiscard]] Text WholeState();
    [[nodiscard]] Text StateWith(std::uint32_t announcement);
    void Save(Text state, Done done);
    void LookSoon();
    void Look();
    void Tell(std::uint64_t upTo, const std::string& error);
    void Written(std::uint64_t number, const std::string& error);

    Parts m_parts;
    Text m_wanted;           ///< the text last handed to the store
    bool m_isAgents = false; ///< it was written from the agent's elements, and not by somebody's hand
    /// No announcement has been seen under another id than it carries: then a text could show one in the
    /// place of another, until the next start.
    bool m_areIdsTheirOwn = true;
    std::uint64_t m_number = 0;                            ///< counts what was handed over
    bool m_isOnDisk = true;                                ///< `m_wanted` stands on the disk
    std::string m_failure;                                 ///< why it does not, once that is known
    std::vector<std::pair<std::uint64_t, Done>> m_waiting; ///< each for the text with that number
    std::set<std::uint32_t> m_inDoubt;                     ///< to be looked at soon
    bool m_areAllInDoubt = false;
    Alarm m_soon;
};

} // namespace controller
