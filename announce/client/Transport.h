#pragma once

#include "announce/client/Connection.h"
#include "announce/client/EventLoop.h"

#include <boost/asio/ssl/context.hpp>
#include <boost/beast/core/tcp_stream.hpp>

#include <string>

/// The steps that an HTTP request and a WebSocket have in common. All of them throw Failure (NoConnection)
/// that names the address, the reason and what would be right.
namespace transport {

/// Finds the host and connects `stream`.
void Connect(EventLoop& loop, const Connection& connection, boost::beast::tcp_stream& stream);

/// What certificates are checked against.
[[nodiscard]] boost::asio::ssl::context MakeTls(const Connection& connection);

/// Prepares the check of the peer's name, for a handshake that is to come.
void CheckName(SSL* handle, const Connection& connection);

/// Throws when there is an error; `handle` is the TLS connection's when there is one.
void RequireConnected(const boost::system::error_code& error,
                      const Connection& connection,
                      SSL* handle = nullptr);

} // namespace transport
