#include "controller/http/Connections.h"

#include <boost/asio/ip/address.hpp>

#include <algorithm>
#include <array>
#include <vector>

namespace controller {

namespace {

bool IsOwnMachine(const std::string& address) {
    boost::system::error_code error;
    const auto parsed = boost::asio::ip::make_address(address, error);
    return !error && parsed.is_loopback();
}

} // namespace

Connections::Place::Place(std::shared_ptr<Connections> connections, std::string address)
    : m_connections(std::move(connections))
    , m_address(std::move(address)) {
    ++m_connections->m_taken;
    ++m_connections->m_takenFrom[m_address];
}

Connections::Place::~Place() {
    --m_connections->m_taken;
    const auto from = m_connections->m_takenFrom.find(m_address);
    if (--from->second == 0)
        m_connections->m_takenFrom.erase(from);
}

std::shared_ptr<Connections::Place> Connections::Take(const std::string& address) {
    if (m_isStopped || m_taken >= m_limits.connections)
        return nullptr;
    const auto from = m_takenFrom.find(address);
    const bool isAtLimit = from != m_takenFrom.end() && from->second >= m_limits.connectionsPerAddress;
    if (isAtLimit && !IsOwnMachine(address))
        return nullptr;
    return std::make_shared<Place>(shared_from_this(), address);
}

void Connections::Join(const std::shared_ptr<Member>& member) {
    // The dead ones are swept out before they are more than the living.
    if (++m_joined > 2 * m_taken + 64)
        Forget();
    m_members.insert(member);
}

void Connections::Forget() {
    for (auto place = m_members.begin(); place != m_members.end();)
        place = place->expired() ? m_members.erase(place) : std::next(place);
    m_joined = m_members.size();
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

void Connections::Look() {
    m_due = TimePoint::max();
    const auto now = std::chrono::steady_clock::now();
    Forget();
    const auto members = m_members;
    auto next = TimePoint::max();
    for (const auto& weak : members) {
        if (const auto member = weak.lock())
            next = std::min(next, member->Check(now));
    }
    // Looking more often would cost more than a late end does.
    if (next != TimePoint::max())
        LookBy(std::max(next, now + std::chrono::milliseconds(250)));
}

void Connections::Stop() {
    m_isStopped = true;
    m_timer.cancel();
    const auto members = std::move(m_members);
    m_members.clear();
    for (const auto& weak : members) {
        if (const auto member = weak.lock())
            member->Stop();
    }
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
