#include "controller/audio/snapcast/LineConnection.h"

#include <boost/asio/connect.hpp>
#include <boost/asio/read_until.hpp>
#include <boost/asio/write.hpp>

#include <istream>
#include <utility>

#include <netinet/tcp.h>
#include <sys/socket.h>

namespace controller::audio {

namespace {

using boost::system::error_code;

/// A server whose machine is gone without a word is noticed within half a minute.
void NoticeLoss(boost::asio::ip::tcp::socket& socket) {
    const auto set = [&](int level, int option, int value) {
        (void)::setsockopt(socket.native_handle(), level, option, &value, sizeof value); // else later
    };
    set(SOL_SOCKET, SO_KEEPALIVE, 1);
    set(IPPROTO_TCP, TCP_KEEPIDLE, 10);
    set(IPPROTO_TCP, TCP_KEEPINTVL, 5);
    set(IPPROTO_TCP, TCP_KEEPCNT, 3);
    set(IPPROTO_TCP, TCP_NODELAY, 1);
}

} // namespace

LineConnection::LineConnection(boost::asio::io_context& context, Listener listener)
    : m_socket(context)
    , m_listener(std::move(listener)) {}

void LineConnection::Connect(const Endpoints& endpoints) {
    boost::asio::async_connect(
        m_socket, endpoints, [self = shared_from_this()](const error_code& error, const auto& /*endpoint*/) {
            if (self->m_isClosed)
                return;
            if (error) {
                self->End("cannot be reached: " + error.message());
                return;
            }
            NoticeLoss(self->m_socket);
            self->Read();
            self->m_listener.connected();
        });
}

void LineConnection::Read() {
    boost::asio::async_read_until(
        m_socket, m_read, '\n', [self = shared_from_this()](const error_code& error, std::size_t /*bytes*/) {
            if (self->m_isClosed)
                return;
            if (error) {
                self->End(error == boost::asio::error::not_found ? "answers what is no Snapcast server's"
                                                                 : "has closed the connection");
                return;
            }
            std::istream stream(&self->m_read);
            std::string line;
            std::getline(stream, line);
            self->m_listener.line(line);
            if (!self->m_isClosed)
                self->Read();
        });
}

void LineConnection::Send(std::string line) {
    m_toWrite.push_back(std::move(line) + "\r\n");
    if (m_toWrite.size() == 1)
        Write();
}

void LineConnection::Write() {
    boost::asio::async_write(m_socket, boost::asio::buffer(m_toWrite.front()),
                             [self = shared_from_this()](const error_code& error, std::size_t /*bytes*/) {
                                 if (self->m_isClosed)
                                     return;
                                 if (error) {
                                     self->End("has closed the connection");
                                     return;
                                 }
                                 self->m_toWrite.pop_front();
                                 if (!self->m_toWrite.empty())
                                     self->Write();
                             });
}

void LineConnection::Close() {
    m_isClosed = true;
    error_code ignored; // It is closed in any case.
    m_socket.close(ignored);
}

void LineConnection::End(const std::string& reason) {
    Close();
    m_listener.ended(reason);
}

std::string LineConnection::Address() const {
    error_code error;
    const auto endpoint = m_socket.remote_endpoint(error);
    return error ? "" : endpoint.address().to_string();
}

} // namespace controller::audio
