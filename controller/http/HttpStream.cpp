#include "controller/http/HttpStream.h"

#include <boost/asio/ssl/stream.hpp>
#include <boost/beast/websocket/ssl.hpp>

namespace controller {

class HttpStream::Tls : public boost::asio::ssl::stream<HttpSocket&> {
public:
    using stream::stream;
};

HttpStream::HttpStream(HttpSocket socket, boost::asio::ssl::context* tls)
    : m_socket(std::move(socket))
    , m_tls(tls != nullptr ? std::make_unique<Tls>(m_socket, *tls) : nullptr) {}

HttpStream::~HttpStream() = default;

void HttpStream::Handshake(net::Done done) {
    m_tls->async_handshake(boost::asio::ssl::stream_base::server, std::move(done));
}

void HttpStream::Shutdown(net::Done done) {
    m_tls->async_shutdown(std::move(done));
}

void HttpStream::Read(const std::vector<boost::asio::mutable_buffer>& buffers, net::DoneWithSize done) {
    m_tls->async_read_some(buffers, std::move(done));
}

void HttpStream::Write(const std::vector<boost::asio::const_buffer>& buffers, net::DoneWithSize done) {
    m_tls->async_write_some(buffers, std::move(done));
}

void HttpStream::Teardown(boost::beast::role_type role, net::Done done) {
    using boost::beast::websocket::async_teardown;
    boost::asio::ssl::stream<HttpSocket&>& stream = *m_tls;
    async_teardown(role, stream, std::move(done));
}

} // namespace controller
