#pragma once

#include "controller/driver/Log.h"
#include "controller/http/ServeConnection.h"

#include <boost/asio/steady_timer.hpp>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace controller {

/// Certificate chain and private key, as PEM files.
struct TlsFiles {
    std::string certificate;
    std::string key;
};

/// Serves HTTP/1.1 and WebSocket, plain or over TLS, on the driver thread's own loop; hands every request to
/// one handler. Driver thread only.
class HttpServer {
public:
    /// `context`, `handler` and `log` are borrowed for life. Throws `std::runtime_error` when certificate and
    /// key cannot be used.
    HttpServer(boost::asio::io_context& context,
               IHttpHandler& handler,
               Log& log,
               const HttpLimits& limits,
               const std::optional<TlsFiles>& tls);
    HttpServer(const HttpServer&) = delete;
    HttpServer& operator=(const HttpServer&) = delete;

    /// Ends as `Close` does. The loop must have ended, or go on until the connections have.
    ~HttpServer();

    /// Listens on a numeric address; port 0 takes a free one. Gives the port. Throws `std::runtime_error`,
    /// which says what is wrong, for an address that is none of this machine's, or a port that is in use.
    std::uint16_t Listen(const std::string& address, std::uint16_t port);

    /// Takes no more connections, and ends those that there are: WebSockets are told that the server goes
    /// away.
    void Close();

    [[nodiscard]] std::size_t Size() const noexcept { return m_connections->Size(); }

private:
    using Acceptor =
        boost::asio::basic_socket_acceptor<boost::asio::ip::tcp, boost::asio::io_context::executor_type>;

    void Accept();
    void Accepted(HttpSocket socket);
    void AcceptFailed(const boost::system::error_code& error);

    IHttpHandler& m_handler;
    Log& m_log;
    const std::shared_ptr<boost::asio::ssl::context> m_tls; ///< null: plain
    const std::shared_ptr<Connections> m_connections;
    Acceptor m_acceptor;
    boost::asio::steady_timer m_pause;
    bool m_isFull = false;
    std::shared_ptr<bool> m_life =
        std::make_shared<bool>(true); ///< what is under way may outlive this object
};

} // namespace controller
