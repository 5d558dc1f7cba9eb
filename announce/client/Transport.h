#pragma once

#include "announce/client/Connection.h"

#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/ssl/ssl_stream.hpp>

#include <utility>

class EventLoop;

/// The steps that an HTTP request and a WebSocket have in common. All of them throw Failure (NoConnection)
/// that names the address, the reason and what would be right.
namespace transport {

using Plain = boost::beast::tcp_stream;
using Secure = boost::beast::ssl_stream<Plain>;

/// Finds the host and connects to it.
[[nodiscard]] Plain Connect(EventLoop& loop, const Connection& connection);

/// The same over TLS: the certificate is one for this host, by an authority that is trusted.
[[nodiscard]] Secure ConnectSecurely(EventLoop& loop, const Connection& connection);

/// Throws when there is an error; `handle` is the TLS connection's when there is one.
void RequireConnected(const boost::system::error_code& error,
                      const Connection& connection,
                      SSL* handle = nullptr);

/// Gives `use` the connected stream, whatever it runs over.
template <class Use>
auto WithStream(EventLoop& loop, const Connection& connection, Use use) {
    return connection.address.isSecure ? use(ConnectSecurely(loop, connection))
                                       : use(Connect(loop, connection));
}

} // namespace transport
