#pragma once

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/streambuf.hpp>

#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace controller::audio {

/// Lines of text to and from a server, over TCP. One thread, that of the context; nothing is called any more
/// when it has been closed.
class LineConnection final : public std::enable_shared_from_this<LineConnection> {
public:
    using Endpoints = std::vector<boost::asio::ip::tcp::endpoint>;

    struct Listener {
        std::function<void()> connected;
        std::function<void(const std::string& line)> line;
        std::function<void(const std::string& reason)> ended; ///< Once; it is closed then.
    };

    /// What comes is given up when a line is longer.
    static constexpr std::size_t kMostBytes = std::size_t{4} * 1024 * 1024;

    LineConnection(boost::asio::io_context& context, Listener listener);

    /// To the first that answers.
    void Connect(const Endpoints& endpoints);
    void Send(std::string line);
    void Close();

    /// Numeric; empty while it is not connected.
    [[nodiscard]] std::string Address() const;

private:
    void Read();
    void Write();
    void End(const std::string& reason);

    boost::asio::ip::tcp::socket m_socket;
    Listener m_listener;
    bool m_isClosed = false;
    boost::asio::streambuf m_read{kMostBytes};
    std::deque<std::string> m_toWrite;
};

} // namespace controller::audio
