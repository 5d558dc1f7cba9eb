#pragma once

#include "controller/http/Connections.h"
#include "controller/http/HttpExchange.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>

#include <memory>

namespace boost::asio::ssl {
class context;
}

namespace controller {

/// A socket of the driver thread's loop; naming the executor saves a virtual call for each operation.
using HttpSocket =
    boost::asio::basic_stream_socket<boost::asio::ip::tcp, boost::asio::io_context::executor_type>;

/// Serves one connection until it ends; it keeps itself alive. With `tls`, which must live as long as the
/// loop, it begins with a handshake.
void ServeConnection(HttpSocket socket,
                     std::shared_ptr<Connections::Place> place,
                     IHttpHandler& handler,
                     boost::asio::ssl::context* tls);

} // namespace controller
