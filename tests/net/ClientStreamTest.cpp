#include "net/ClientStream.h"

#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl/context.hpp>
#include <gtest/gtest.h>

#include <array>
#include <optional>

namespace net {

namespace {

using boost::system::error_code;
using Tcp = boost::asio::ip::tcp;

/// A server that takes connections and says nothing.
class SilentServer {
public:
    explicit SilentServer(boost::asio::io_context& context)
        : m_acceptor(context, Tcp::endpoint(boost::asio::ip::address_v4::loopback(), 0)) {}

    [[nodiscard]] Tcp::endpoint Place() const { return m_acceptor.local_endpoint(); }

private:
    Tcp::acceptor m_acceptor;
};

} // namespace

TEST(ClientStreamTest, AReadUnderWayOutlivesIt) {
    boost::asio::io_context context;
    const SilentServer server(context);
    std::optional<ClientStream> stream(std::in_place, context);
    stream->next_layer().socket().connect(server.Place());
    std::array<char, 1> byte{};
    std::optional<error_code> ended;
    stream->async_read_some(boost::asio::buffer(byte),
                            [&ended](const error_code& error, std::size_t) { ended = error; });
    stream.reset();
    EXPECT_FALSE(ended);
    context.run();
    EXPECT_EQ(ended, error_code(boost::asio::error::operation_aborted));
}

TEST(ClientStreamTest, AHandshakeUnderWayOutlivesIt) {
    boost::asio::io_context context;
    boost::asio::ssl::context tls(boost::asio::ssl::context::tls_client);
    const SilentServer server(context);
    std::optional<ClientStream> stream(std::in_place, context, tls);
    stream->next_layer().socket().connect(server.Place());
    std::optional<error_code> ended;
    stream->Handshake([&ended](const error_code& error) { ended = error; });
    context.poll(); // What it says first is sent, and the answer waited for.
    EXPECT_FALSE(ended);
    stream.reset();
    context.restart();
    context.run();
    EXPECT_EQ(ended, error_code(boost::asio::error::operation_aborted));
}

TEST(ClientStreamTest, KnowsWhatACertificateCanName) {
    boost::asio::io_context context;
    boost::asio::ssl::context tls(boost::asio::ssl::context::tls_client);
    ClientStream stream(context, tls);
    EXPECT_TRUE(stream.ExpectName("home.example"));
    EXPECT_STREQ(SSL_get_servername(stream.Tls(), TLSEXT_NAMETYPE_host_name), "home.example");
    EXPECT_TRUE(stream.ExpectName("192.168.1.10"));
    EXPECT_TRUE(stream.ExpectName("fd00::1"));
    EXPECT_FALSE(stream.ExpectName(std::string("home\0example", 12)));
    EXPECT_EQ(ClientStream(context).Tls(), nullptr);
}

} // namespace net
