#pragma once

#include "controller/driver/Alarm.h"
#include "controller/events/EventFeed.h"
#include "controller/log/Log.h"
#include "controller/state/StateStore.h"

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// Keeps the agent's state on the disk: compares it with what was written last, and writes what differs.
/// Driver thread only.
class StateKeeper {
public:
    /// How long a change that nobody waits for may take to be noticed.
    static constexpr std::chrono::seconds kSoon{2};

    struct Parts {
        std::function<std::string()> state; ///< the agent's present state; may throw
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

    /// Looks a little later, once, whether something is to be saved.
    void SaveSoon();

private:
    void Tell(std::uint64_t upTo, const std::string& error);
    void Written(std::uint64_t number, const std::string& error);

    Parts m_parts;
    std::string m_wanted;                                  ///< the text last handed to the store
    std::uint64_t m_number = 0;                            ///< counts what was handed over
    bool m_isOnDisk = true;                                ///< `m_wanted` stands on the disk
    std::string m_failure;                                 ///< why it does not, once that is known
    std::vector<std::pair<std::uint64_t, Done>> m_waiting; ///< each for the text with that number
    Alarm m_soon;
};
