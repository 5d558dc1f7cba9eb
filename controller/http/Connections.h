#pragma once

#include "controller/http/HttpLimits.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/steady_timer.hpp>

#include <chrono>
#include <ctime>
#include <map>
#include <memory>
#include <set>
#include <string>

namespace controller {

/// The connections of a server: how many there are, from where, and when each has to be looked after. Driver
/// thread only.
class Connections : public std::enable_shared_from_this<Connections> {
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    class Member {
    public:
        virtual ~Member() = default;

        /// Ends what has taken too long; gives the time of the next look.
        virtual TimePoint Check(TimePoint now) = 0;

        /// The server ends: closes the connection in good order where that needs no waiting.
        virtual void Stop() = 0;
    };

    /// A place among the connections; given back by destruction.
    class Place {
    public:
        Place(std::shared_ptr<Connections> connections, std::string address);
        Place(const Place&) = delete;
        Place& operator=(const Place&) = delete;
        ~Place();

        [[nodiscard]] const std::string& Address() const noexcept { return m_address; }
        [[nodiscard]] Connections& Owner() const noexcept { return *m_connections; }

    private:
        const std::shared_ptr<Connections> m_connections;
        const std::string m_address;
    };

    Connections(boost::asio::io_context& context, const HttpLimits& limits)
        : m_timer(context)
        , m_limits(limits) {}
    Connections(const Connections&) = delete;
    Connections& operator=(const Connections&) = delete;

    /// A place for one more connection from this address; null where the limits are reached.
    [[nodiscard]] std::shared_ptr<Place> Take(const std::string& address);

    /// The member is looked after as long as it lives.
    void Join(const std::shared_ptr<Member>& member);

    /// Somebody has to be looked after by then.
    void LookBy(TimePoint due);

    /// Ends every connection.
    void Stop();

    [[nodiscard]] std::size_t Size() const noexcept { return m_taken; }
    [[nodiscard]] const HttpLimits& Limits() const noexcept { return m_limits; }

    /// The present time for the `Date` header.
    [[nodiscard]] const std::string& Date();

private:
    void Look();
    void Forget();

    boost::asio::steady_timer m_timer;
    const HttpLimits m_limits;
    std::size_t m_taken = 0;
    std::map<std::string, std::size_t> m_takenFrom;
    std::set<std::weak_ptr<Member>, std::owner_less<>> m_members;
    std::size_t m_joined = 0;
    TimePoint m_due = TimePoint::max();
    bool m_isStopped = false;
    std::time_t m_dateOf = 0;
    std::string m_date;
};

} // namespace controller
