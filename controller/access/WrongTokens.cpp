#include "controller/access/WrongTokens.h"

#include "controller/driver/Network.h"

#include <algorithm>
#include <utility>

namespace controller {

WrongTokens::WrongTokens(IScheduler& scheduler, std::function<void(const std::string& line)> warn)
    : m_scheduler(scheduler)
    , m_warn(std::move(warn))
    , m_gathering(scheduler, "telling of wrong tokens") {}

bool WrongTokens::AreTooManyFrom(const std::string& address) const {
    return Recent(address) >= kOfAnAddress || Recent(network::NameOf(address)) >= kOfANetwork;
}

bool WrongTokens::AreNoneFrom(const std::string& address) const {
    return Recent(network::NameOf(address)) == 0;
}

std::size_t WrongTokens::Recent(const std::string& origin) const {
    const auto place = m_byName.find(origin);
    if (place == m_byName.end())
        return 0;
    const auto& times = place->second->times;
    return static_cast<std::size_t>(std::count_if(
        times.begin(), times.end(), [this](TimePoint time) { return m_scheduler.Now() - time < kMemory; }));
}

void WrongTokens::Count(const std::string& address) {
    Count(address, kOfAnAddress);
    const std::string network = network::NameOf(address);
    if (network != address) // which may be no address at all
        Count(network, kOfANetwork);
}

void WrongTokens::Count(const std::string& origin, std::size_t limit) {
    const auto [place, isNew] = m_byName.try_emplace(origin);
    if (isNew)
        place->second = m_origins.insert(m_origins.end(), Origin{origin, {}});
    else
        m_origins.splice(m_origins.end(), m_origins, place->second);
    auto& times = place->second->times;
    times.push_back(m_scheduler.Now());
    if (times.size() > limit)
        times.pop_front();
    if (Recent(origin) == limit)
        Tell(origin);
    if (m_origins.size() > kMaxOrigins) {
        m_byName.erase(m_origins.front().name);
        m_origins.pop_front();
    }
}

void WrongTokens::Tell(const std::string& origin) {
    if (m_gathering.IsRunning()) {
        ++m_untold;
        m_lastUntold = origin;
        return;
    }
    m_warn("Too many wrong tokens from " + origin + ": none are looked at for a minute");
    Gather();
}

void WrongTokens::Gather() {
    m_gathering.Start(kMemory, [this] {
        const std::size_t untold = std::exchange(m_untold, 0);
        if (untold == 0)
            return;
        m_warn("Too many wrong tokens, in the last minute " + std::to_string(untold) +
               (untold == 1 ? " time" : " times") + ", at last from " + m_lastUntold);
        Gather();
    });
}

} // namespace controller
