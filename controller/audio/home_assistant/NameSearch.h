#pragma once

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace controller::audio {

/// Finds where servers are. The machine may take for that as long as it likes, and nobody can end it: so each
/// server's name is asked on a thread of its own, one at most, which is left behind when nobody waits any
/// more. The context's thread.
class NameSearch final {
public:
    using Endpoints = std::vector<boost::asio::ip::tcp::endpoint>;
    using Found = std::function<void(const Endpoints& endpoints, const std::string& error)>;

    explicit NameSearch(boost::asio::io_context& context);
    NameSearch(const NameSearch&) = delete;
    NameSearch& operator=(const NameSearch&) = delete;
    ~NameSearch();

    /// Calls back, never within this call.
    void Find(const std::string& host, std::uint16_t port, Found found);

    /// Calls back nobody any more.
    void Close();

private:
    using Place = std::pair<std::string, std::uint16_t>;
    struct Gate;

    void Answer(const Place& place, const Endpoints& endpoints, const std::string& error);

    boost::asio::io_context& m_context;
    std::map<Place, std::vector<Found>> m_waiting;
    std::shared_ptr<Gate> m_gate; ///< what threads that are left behind come through
};

} // namespace controller::audio
