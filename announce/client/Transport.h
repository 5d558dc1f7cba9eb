#pragma once

#include "announce/client/Connection.h"
#include "net/ClientStream.h"

class EventLoop;

/// The steps that an HTTP request and a WebSocket have in common. All of them throw Failure (NoConnection)
/// that names the address, the reason and what would be right.
namespace transport {

/// Finds the host and connects to it, over TLS where the address says so: the certificate is one for this
/// host, by an authority that is trusted.
[[nodiscard]] net::ClientStream Connect(EventLoop& loop, const Connection& connection);

/// Throws when there is an error; `tls` is the connection's when it has one.
void RequireConnected(const boost::system::error_code& error,
                      const Connection& connection,
                      SSL* tls = nullptr);

} // namespace transport
