#pragma once

#include "controller/audio/FoundOutput.h"
#include "controller/driver/Alarm.h"
#include "controller/driver/IScheduler.h"

#include <chrono>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace controller::audio {

/// Looks for places where a room could be heard, with every kind of output at once. Who is looking is waited
/// for by all who want to know; a kind that does not come back is left out until it does. Driver thread.
class OutputSearch final {
public:
    using Found = std::function<void(const std::vector<FoundOutput>& places)>;
    /// Has a kind look, and what it finds told later, or never.
    using Look = std::function<void(const std::string& kind, Found found)>;

    static constexpr std::chrono::seconds kPatience{4};

    /// What is found stands in the order of these kinds.
    OutputSearch(IScheduler& driver, std::vector<std::string> kinds, Look look);

    /// Never calls back within the call.
    void Find(Found found);

private:
    void Answered(const std::string& kind, unsigned search, const std::vector<FoundOutput>& places);
    void Finish();

    const std::vector<std::string> m_kinds;
    const Look m_look;
    std::vector<Found> m_waiting;
    unsigned m_search = 0;
    std::set<std::string> m_looking; ///< kinds, also of former searches
    std::map<std::string, std::vector<FoundOutput>> m_found;
    Alarm m_patience;
};

} // namespace controller::audio
