#pragma once

#include "controller/http/HttpLimits.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/address.hpp>
#include <boost/asio/steady_timer.hpp>

#include <array>
#include <chrono>
#include <ctime>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace controller {

/// The connections of a server: how many there are, from where, and when each has to be looked after.
/// Strangers, clients that are neither on this machine nor have shown a token, get only a part of the places,
/// and lose one that they leave idle to the next who comes. Driver thread only.
class Connections : public std::enable_shared_from_this<Connections> {
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    class Member {
    public:
        virtual ~Member() = default;

        /// Ends what has taken too long; gives the time of the next look.
        virtual TimePoint Check(TimePoint now) = 0;

        /// Closes the connection, in good order where that needs no waiting.
        virtual void Stop() = 0;

        /// Whether nothing is lost when it is closed now: no request has come whole.
        [[nodiscard]] virtual bool IsWaiting() const noexcept = 0;
    };

    /// A place among the connections; given back by destruction.
    class Place {
    public:
        /// The address is no IPv4 address in the clothes of an IPv6 one.
        Place(std::shared_ptr<Connections> connections, const boost::asio::ip::address& plain);
        Place(const Place&) = delete;
        Place& operator=(const Place&) = delete;
        ~Place();

        /// The member has the place now, and is looked after as long as it lives.
        void Hold(std::weak_ptr<Member> member) { m_member = std::move(member); }

        /// The client is no stranger any more.
        void Trust();

        [[nodiscard]] const std::string& Address() const noexcept { return m_address; }
        [[nodiscard]] Connections& Owner() const noexcept { return *m_connections; }

    private:
        friend Connections;

        void Leave();

        const std::shared_ptr<Connections> m_connections;
        const std::string m_address;
        const std::array<std::string, 3> m_origins; ///< what it counts for as a stranger
        std::weak_ptr<Member> m_member;
        bool m_isStranger;
        bool m_hasLeft = false;
        const std::list<Place*>::iterator m_self;
    };

    Connections(boost::asio::io_context& context, const HttpLimits& limits)
        : m_timer(context)
        , m_limits(limits) {}
    Connections(const Connections&) = delete;
    Connections& operator=(const Connections&) = delete;

    /// A place for one more connection from this address; null where the limits are reached.
    [[nodiscard]] std::shared_ptr<Place> Take(const boost::asio::ip::address& given);

    /// Somebody has to be looked after by then.
    void LookBy(TimePoint due);

    /// Ends every connection.
    void Stop();

    [[nodiscard]] std::size_t Size() const noexcept { return m_places.size(); }
    [[nodiscard]] const HttpLimits& Limits() const noexcept { return m_limits; }

    /// The present time for the `Date` header.
    [[nodiscard]] const std::string& Date();

private:
    void Look();
    [[nodiscard]] bool HasRoom(const std::string& origin, std::size_t limit);
    [[nodiscard]] bool SendAway(const std::string& origin);
    [[nodiscard]] std::vector<std::shared_ptr<Member>> Members() const;

    boost::asio::steady_timer m_timer;
    const HttpLimits m_limits;
    std::list<Place*> m_places;                     ///< the oldest first
    std::map<std::string, std::size_t> m_strangers; ///< by origin
    TimePoint m_due = TimePoint::max();
    bool m_isStopped = false;
    std::time_t m_dateOf = 0;
    std::string m_date;
};

} // namespace controller
