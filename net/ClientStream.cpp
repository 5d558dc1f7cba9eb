#include "net/ClientStream.h"

#include <boost/asio/ip/address.hpp>
#include <boost/asio/ssl/stream.hpp>

#include <optional>

#include <openssl/x509v3.h>

namespace net {

struct ClientStream::Layers {
    explicit Layers(boost::asio::io_context& context) : tcp(context) {}

    next_layer_type tcp;
    std::optional<boost::asio::ssl::stream<next_layer_type&>> tls;
};

ClientStream::ClientStream(boost::asio::io_context& context) : m_layers(std::make_shared<Layers>(context)) {}

ClientStream::ClientStream(boost::asio::io_context& context, boost::asio::ssl::context& tls)
    : ClientStream(context) {
    m_layers->tls.emplace(m_layers->tcp, tls);
}

ClientStream::~ClientStream() {
    if (m_layers)
        m_layers->tcp.close();
}

ClientStream::next_layer_type& ClientStream::next_layer() noexcept {
    return m_layers->tcp;
}

const ClientStream::next_layer_type& ClientStream::next_layer() const noexcept {
    return m_layers->tcp;
}

SSL* ClientStream::Tls() noexcept {
    return m_layers->tls ? m_layers->tls->native_handle() : nullptr;
}

bool ClientStream::ExpectName(const std::string& host) {
    SSL* const tls = Tls();
    X509_VERIFY_PARAM* const rules = SSL_get0_param(tls);
    Error isName;
    (void)boost::asio::ip::make_address(host, isName);
    if (!isName)
        return X509_VERIFY_PARAM_set1_ip_asc(rules, host.c_str()) == 1;
    return X509_VERIFY_PARAM_set1_host(rules, host.c_str(), host.size()) == 1 &&
           SSL_set_tlsext_host_name(tls, host.c_str()) == 1;
}

void ClientStream::Handshake(Done done) {
    m_layers->tls->async_handshake(
        boost::asio::ssl::stream_base::client,
        [layers = m_layers, done = std::move(done)](const Error& error) { done(error); });
}

void ClientStream::Read(const std::vector<boost::asio::mutable_buffer>& buffers, DoneWithSize done) {
    if (m_layers->tls)
        m_layers->tls->async_read_some(buffers, Holding(std::move(done)));
    else
        m_layers->tcp.async_read_some(buffers, std::move(done));
}

void ClientStream::Write(const std::vector<boost::asio::const_buffer>& buffers, DoneWithSize done) {
    if (m_layers->tls)
        m_layers->tls->async_write_some(buffers, Holding(std::move(done)));
    else
        m_layers->tcp.async_write_some(buffers, std::move(done));
}

DoneWithSize ClientStream::Holding(DoneWithSize done) const {
    return [layers = m_layers, done = std::move(done)](const Error& error, std::size_t size) {
        done(error, size);
    };
}

} // namespace net
