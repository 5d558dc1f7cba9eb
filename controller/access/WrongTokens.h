#pragma once

#include "controller/driver/Alarm.h"

#include <chrono>
#include <cstddef>
#include <deque>
#include <functional>
#include <list>
#include <map>
#include <string>

namespace controller {

/// Counts wrong tokens by where they come from: an address, and its network, for whoever has one address of
/// an IPv6 /64 has all of them. Driver thread only.
class WrongTokens {
public:
    /// So many of one address, or of one network, are looked at in a minute.
    static constexpr std::size_t kOfAnAddress = 10;
    static constexpr std::size_t kOfANetwork = 40;
    static constexpr std::chrono::minutes kMemory{1};
    /// So many addresses and networks are remembered; of more, the one that was wrong the longest ago is not.
    static constexpr std::size_t kMaxOrigins = 2000;

    /// `scheduler` is borrowed for life. `warn` gets a line a minute, however many guess.
    WrongTokens(IScheduler& scheduler, std::function<void(const std::string& line)> warn);

    /// Whether no further token of this address is to be looked at.
    [[nodiscard]] bool AreTooManyFrom(const std::string& address) const;

    /// Whether its network has sent none of late.
    [[nodiscard]] bool AreNoneFrom(const std::string& address) const;

    void Count(const std::string& address);

private:
    using TimePoint = IScheduler::Duration;
    struct Origin {
        std::string name;
        std::deque<TimePoint> times; ///< the last ones, as many as the limit
    };

    [[nodiscard]] std::size_t Recent(const std::string& origin) const;
    void Count(const std::string& origin, std::size_t limit);
    void Tell(const std::string& origin);
    void Gather();

    IScheduler& m_scheduler;
    const std::function<void(const std::string&)> m_warn;
    std::list<Origin> m_origins; ///< the one that was wrong last is the last
    std::map<std::string, std::list<Origin>::iterator> m_byName;
    std::size_t m_untold = 0;
    std::string m_lastUntold;
    Alarm m_gathering; ///< runs for a minute after a line
};

} // namespace controller
