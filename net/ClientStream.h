#pragma once

#include "net/Erased.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/post.hpp>
#include <boost/beast/core/bind_handler.hpp>
#include <boost/beast/core/role.hpp>
#include <boost/beast/core/tcp_stream.hpp>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <openssl/ssl.h>

namespace boost::asio::ssl {
class context;
}

namespace net {

/// A connection that a client makes, over TCP alone or over TLS, for the composed operations of Asio and
/// Beast: they are compiled once, whatever it runs over, at the price of two allocations for each read and
/// write. The context's thread.
class ClientStream {
public:
    using next_layer_type = boost::beast::tcp_stream;
    using executor_type = next_layer_type::executor_type;
    using Error = boost::system::error_code;

    /// Over TCP alone.
    explicit ClientStream(boost::asio::io_context& context);
    /// Over TLS, once the handshake is done.
    ClientStream(boost::asio::io_context& context, boost::asio::ssl::context& tls);
    ClientStream(ClientStream&& other) noexcept = default;
    ClientStream& operator=(ClientStream&&) = delete;
    /// Closes the connection: what is under way ends with an error, and may outlive this object.
    ~ClientStream();

    [[nodiscard]] executor_type get_executor() noexcept { return next_layer().get_executor(); }
    [[nodiscard]] next_layer_type& next_layer() noexcept;
    [[nodiscard]] const next_layer_type& next_layer() const noexcept;

    /// Null: over TCP alone.
    [[nodiscard]] SSL* Tls() noexcept;
    /// Over TLS, before the handshake: tells the server which name is meant, and refuses a certificate for
    /// another. False for what no certificate can name.
    [[nodiscard]] bool ExpectName(const std::string& host);
    /// Over TLS, once it is connected.
    void Handshake(Done done);

    template <class Buffers, class Handler>
    void async_read_some(const Buffers& buffers, Handler&& handler) {
        Read({boost::asio::buffer_sequence_begin(buffers), boost::asio::buffer_sequence_end(buffers)},
             Erased<std::size_t>(std::forward<Handler>(handler)));
    }

    template <class Buffers, class Handler>
    void async_write_some(const Buffers& buffers, Handler&& handler) {
        Write({boost::asio::buffer_sequence_begin(buffers), boost::asio::buffer_sequence_end(buffers)},
              Erased<std::size_t>(std::forward<Handler>(handler)));
    }

    /// How a WebSocket ends over it: both sides have said that they do.
    template <class Handler>
    friend void async_teardown(boost::beast::role_type /*role*/, ClientStream& stream, Handler&& handler) {
        stream.next_layer().close();
        boost::asio::post(stream.get_executor(),
                          boost::beast::bind_front_handler(std::forward<Handler>(handler), Error()));
    }

private:
    struct Layers;

    void Read(const std::vector<boost::asio::mutable_buffer>& buffers, DoneWithSize done);
    void Write(const std::vector<boost::asio::const_buffer>& buffers, DoneWithSize done);

    /// With the layers, which TLS looks at when an operation ends.
    [[nodiscard]] DoneWithSize Holding(DoneWithSize done) const;

    std::shared_ptr<Layers> m_layers; ///< null: moved from
};

} // namespace net
