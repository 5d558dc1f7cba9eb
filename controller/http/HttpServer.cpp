#include "controller/http/HttpServer.h"

#include <boost/asio/ip/v6_only.hpp>
#include <boost/asio/ssl/context.hpp>

#include <algorithm>
#include <stdexcept>

#include <sys/resource.h>

namespace controller {

namespace {

using boost::system::error_code;

/// What the program needs beside its connections: sounds, database, worker threads.
constexpr rlim_t kOtherDescriptors = 200;

/// Lets the process have as many descriptors as the connections need; gives how many connections it can have.
std::size_t RaiseDescriptorLimit(std::size_t connections) {
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) != 0)
        return connections;
    const rlim_t wanted = std::min<rlim_t>(limit.rlim_max, connections + kOtherDescriptors);
    if (limit.rlim_cur < wanted) {
        limit.rlim_cur = wanted;
        (void)setrlimit(RLIMIT_NOFILE, &limit); // what was allowed before is looked at next
        (void)getrlimit(RLIMIT_NOFILE, &limit);
    }
    const rlim_t possible =
        limit.rlim_cur > 2 * kOtherDescriptors ? limit.rlim_cur - kOtherDescriptors : limit.rlim_cur / 2;
    return std::min<std::size_t>(connections, possible);
}

HttpLimits Possible(HttpLimits limits) {
    limits.connections = RaiseDescriptorLimit(limits.connections);
    return limits;
}

std::shared_ptr<boost::asio::ssl::context> LoadTls(const TlsFiles& files) {
    using boost::asio::ssl::context;
    auto tls = std::make_shared<context>(context::tls_server);
    tls->set_options(context::default_workarounds | context::no_tlsv1 | context::no_tlsv1_1);
    // Each connection has keys of its own, and what was sent is authentic. TLS 1.3 knows nothing else.
    if (SSL_CTX_set_cipher_list(tls->native_handle(), "ECDHE+AESGCM:ECDHE+CHACHA20") != 1)
        throw std::runtime_error("OpenSSL has none of the cipher suites that are needed for TLS 1.2");
    error_code error;
    tls->use_certificate_chain_file(files.certificate, error);
    if (error)
        throw std::runtime_error("the certificate " + files.certificate +
                                 " cannot be used: " + error.message() + "; a PEM file is needed");
    tls->use_private_key_file(files.key, context::pem, error);
    if (error)
        throw std::runtime_error(
            "the key " + files.key + " cannot be used: " + error.message() +
            "; the certificate's own private key is needed, as a PEM file without passphrase");
    return tls;
}

} // namespace

HttpServer::HttpServer(boost::asio::io_context& context,
                       IHttpHandler& handler,
                       Log& log,
                       const HttpLimits& limits,
                       const std::optional<TlsFiles>& tls)
    : m_handler(handler)
    , m_log(log)
    , m_tls(tls ? LoadTls(*tls) : nullptr)
    , m_connections(std::make_shared<Connections>(context, Possible(limits)))
    , m_acceptor(context)
    , m_pause(context) {}

HttpServer::~HttpServer() {
    Close();
}

std::uint16_t HttpServer::Listen(const std::string& address, std::uint16_t port) {
    error_code error;
    const auto parsed = boost::asio::ip::make_address(address, error);
    if (error)
        throw std::runtime_error("\"" + address + "\" is no numeric address, such as 127.0.0.1 or ::1");
    const boost::asio::ip::tcp::endpoint endpoint(parsed, port);
    m_acceptor.open(endpoint.protocol(), error);
    if (!error)
        m_acceptor.set_option(Acceptor::reuse_address(true), error);
    if (!error && parsed.is_v6() && parsed.is_unspecified())
        m_acceptor.set_option(boost::asio::ip::v6_only(false), error);
    if (!error)
        m_acceptor.bind(endpoint, error);
    if (!error)
        m_acceptor.listen(boost::asio::socket_base::max_listen_connections, error);
    if (error) {
        error_code ignored; // closing is all that can be done
        m_acceptor.close(ignored);
        throw std::runtime_error("cannot listen on " + address + ", port " + std::to_string(port) + ": " +
                                 error.message());
    }
    Accept();
    return m_acceptor.local_endpoint().port();
}

void HttpServer::Accept() {
    m_acceptor.async_accept([this, life = std::weak_ptr(m_life)](const error_code& error, HttpSocket socket) {
        if (life.expired())
            return;
        if (error) {
            AcceptFailed(error);
            return;
        }
        Accepted(std::move(socket));
        Accept();
    });
}

void HttpServer::Accepted(HttpSocket socket) {
    error_code error;
    const auto peer = socket.remote_endpoint(error);
    if (error)
        return; // gone already
    auto place = m_connections->Take(peer.address());
    if (!place) {
        if (!std::exchange(m_isFull, true))
            m_log.Warning("Too many connections, from " + peer.address().to_string() +
                          " or in all: new ones are closed at once");
        return;
    }
    m_isFull = false;
    socket.set_option(boost::asio::ip::tcp::no_delay(true), error);
    ServeConnection(std::move(socket), std::move(place), m_handler, m_tls.get());
}

void HttpServer::AcceptFailed(const error_code& error) {
    m_log.Warning("A connection could not be taken: " + error.message());
    // Out of descriptors or memory: the same would happen again at once.
    m_pause.expires_after(std::chrono::milliseconds(100));
    m_pause.async_wait([this, life = std::weak_ptr(m_life)](const error_code& stopped) {
        if (!stopped && !life.expired())
            Accept();
    });
}

void HttpServer::Close() {
    if (!std::exchange(m_life, nullptr))
        return;
    error_code ignored; // closing is all that can be done
    m_acceptor.close(ignored);
    m_pause.cancel();
    m_connections->Stop();
}

} // namespace controller
