#include "controller/http/Connections.h"

#include "controller/driver/Network.h"

#include <algorithm>
#include <array>
#include <utility>

namespace controller {

namespace {

using boost::asio::ip::address;

/// The origin of every stranger.
constexpr const char* kAnywhere = "";

} // namespace

Connections::Place::Place(std::shared_ptr<Connections> connections, const address& plain)
    : m_connections(std::move(connections))
    , m_address(plain.to_string())
    , m_origins{kAnywhere, m_address, network::NameOf(plain)}
    , m_isStranger(!plain.is_loopback())
    , m_self(m_connections->m_places.insert(m_connections->m_places.end(), this)) {
    if (m_isStranger) {
        for (const std::string& origin : m_origins)
            ++m_connections->m_strangers[origin];
    }
}

Connections::Place::~Place() {
    Leave();
}

void Connections::Place::Trust() {
    if (!std::exchange(m_isStranger, false))
        return;
    for (const std::string& origin : m_origins) {
        const auto count = m_connections->m_strangers.find(origin);
        if (--count->second == 0)
            m_connections->m_strangers.erase(count);
    }
}

void Connections::Place::Leave() {
    if (std::exchange(m_hasLeft, true))
        return;
    Trust();
    m_connections->m_places.erase(m_self);
}

std::shared_ptr<Connections::Place> Connections::Take(const address& given) {
    if (m_isStopped)
        return nullptr;
    const address plain = network::Plain(given);
    if (m_places.size() >= m_limits.connections && !SendAway(kAnywhere))
        return nullptr;
    if (!plain.is_loopback() && !(HasRoom(plain.to_string(), m_limits.connectionsPerAddress) &&
                                  HasRoom(network::NameOf(plain), m_limits.connectionsPerNetwork) &&
                                  HasRoom(kAnywhere, m_limits.connections - m_limits.connections / 10)))
        return nullptr;
    return std::make_shared<Place>(shared_from_this(), plain);
}

bool Connections::HasRoom(const std::string& origin, std::size_t limit) {
    const auto count = m_strangers.find(origin);
    return count == m_strangers.end() || count->second < limit || SendAway(origin);
}

bool Connections::SendAway(const std::string& origin) {
    for (Place* const place : m_places) {
        const bool isFromThere =
            std::find(place->m_origins.begin(), place->m_origins.end(), origin) != place->m_origins.end();
        const auto member = place->m_isStranger && isFromThere ? place->m_member.lock() : nullptr;
        if (member == nullptr || !member->IsWaiting())
            continue;
        place->Leave(); // its end comes later
        member->Stop();
        return true;
    }
    return false;
}

void Connections::LookBy(TimePoint due) {
    if (due >= m_due || m_isStopped)
        return;
    m_due = due;
    m_timer.expires_at(due);
    m_timer.async_wait([weak = weak_from_this()](const boost::system::error_code& error) {
        const auto self = weak.lock();
        if (!error && self && !self->m_isStopped)
            self->Look();
    });
}

std::vector<std::shared_ptr<Connections::Member>> Connections::Members() const {
    std::vector<std::shared_ptr<Member>> members;
    for (const Place* const place : m_places) {
        if (auto member = place->m_member.lock())
            members.push_back(std::move(member));
    }
    return members;
}

void Connections::Look() {
    m_due = TimePoint::max();
    const auto now = std::chrono::steady_clock::now();
    auto next = TimePoint::max();
    for (const auto& member : Members())
        next = std::min(next, member->Check(now));
    // Looking more often would cost more than a late end does.
    if (next != TimePoint::max())
        LookBy(std::max(next, now + std::chrono::milliseconds(250)));
}

void Connections::Stop() {
    m_isStopped = true;
    m_timer.cancel();
    for (const auto& member : Members())
        member->Stop();
}

const std::string& Connections::Date() {
    const std::time_t now = std::time(nullptr);
    if (now == m_dateOf)
        return m_date;
    m_dateOf = now;
    std::tm parts{};
    gmtime_r(&now, &parts);
    // The names are the protocol's, whatever the locale.
    static constexpr std::array<const char*, 7> kDays{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    static constexpr std::array<const char*, 12> kMonths{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                         "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    std::array<char, 64> text{};
    const std::size_t length = std::strftime(text.data(), text.size(), " %Y %H:%M:%S GMT", &parts);
    const std::string day = (parts.tm_mday < 10 ? "0" : "") + std::to_string(parts.tm_mday);
    m_date = std::string(kDays.at(static_cast<std::size_t>(parts.tm_wday))) + ", " + day + " " +
             kMonths.at(static_cast<std::size_t>(parts.tm_mon)) + std::string(text.data(), length);
    return m_date;
}

} // namespace controller
