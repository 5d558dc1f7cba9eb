#pragma once

#include "controller/driver/Log.h"
#include "controller/http/HttpExchange.h"
#include "controller/http/HttpLimits.h"

#include <boost/asio/io_context.hpp>

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

    [[nodiscard]] std::size_t Connections() const noexcept;

private:
    class Implementation;
    std::shared_ptr<Implementation> m_implementation;
};

} // namespace controller
