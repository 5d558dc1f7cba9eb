#pragma once

#include "controller/http/ServeConnection.h"
#include "net/Erased.h"

#include <boost/asio/buffer.hpp>
#include <boost/beast/websocket/teardown.hpp>

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace controller {

/// What a connection of the server runs over: its socket alone, or TLS. What is compiled for each operation
/// is that of the socket; over TLS all of them share one, for two allocations more.
class HttpStream {
public:
    using next_layer_type = HttpSocket;
    using executor_type = HttpSocket::executor_type;

    /// With `tls`, which must live as long as the stream, it begins with a handshake.
    HttpStream(HttpSocket socket, boost::asio::ssl::context* tls);
    HttpStream(const HttpStream&) = delete;
    HttpStream& operator=(const HttpStream&) = delete;
    ~HttpStream();

    [[nodiscard]] bool IsSecure() const noexcept { return m_tls != nullptr; }
    [[nodiscard]] executor_type get_executor() noexcept { return m_socket.get_executor(); }
    [[nodiscard]] next_layer_type& next_layer() noexcept { return m_socket; }
    [[nodiscard]] const next_layer_type& next_layer() const noexcept { return m_socket; }

    /// Of TLS, where it is secure.
    void Handshake(net::Done done);
    void Shutdown(net::Done done);

    template <class Buffers, class Handler>
    void async_read_some(const Buffers& buffers, Handler&& handler) {
        if (m_tls)
            Read({boost::asio::buffer_sequence_begin(buffers), boost::asio::buffer_sequence_end(buffers)},
                 net::Erased<std::size_t>(std::forward<Handler>(handler)));
        else
            m_socket.async_read_some(buffers, std::forward<Handler>(handler));
    }

    template <class Buffers, class Handler>
    void async_write_some(const Buffers& buffers, Handler&& handler) {
        if (m_tls)
            Write({boost::asio::buffer_sequence_begin(buffers), boost::asio::buffer_sequence_end(buffers)},
                  net::Erased<std::size_t>(std::forward<Handler>(handler)));
        else
            m_socket.async_write_some(buffers, std::forward<Handler>(handler));
    }

    /// How the library ends such a stream.
    template <class Handler>
    friend void async_teardown(boost::beast::role_type role, HttpStream& stream, Handler&& handler) {
        if (stream.m_tls) {
            stream.Teardown(role, net::Erased(std::forward<Handler>(handler)));
            return;
        }
        using boost::beast::websocket::async_teardown;
        async_teardown(role, stream.m_socket, std::forward<Handler>(handler));
    }

private:
    class Tls;

    void Read(const std::vector<boost::asio::mutable_buffer>& buffers, net::DoneWithSize done);
    void Write(const std::vector<boost::asio::const_buffer>& buffers, net::DoneWithSize done);
    void Teardown(boost::beast::role_type role, net::Done done);

    HttpSocket m_socket;
    std::unique_ptr<Tls> m_tls; ///< null: the socket alone
};

} // namespace controller
