#include "announce/client/Transport.h"

#include "announce/client/EventLoop.h"

#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/asio/ssl/error.hpp>
#include <boost/beast/http/error.hpp>

#include <openssl/err.h>
#include <openssl/ssl.h>
#include <openssl/x509v3.h>

namespace transport {
namespace {

using boost::system::error_code;
using Tcp = boost::asio::ip::tcp;

Failure NoConnection(const Connection& connection, const std::string& why, std::string right = "") {
    if (right.empty())
        right = "a controller that runs there; another address is given by " + connection.otherAddress;
    return {ExitStatus::NoConnection, "no controller answers at " + connection.address.Text() + ": " + why,
            std::move(right)};
}

/// Why the certificate was refused; empty when it was not the certificate.
std::string CertificateTrouble(SSL* tls) {
    const long result = tls != nullptr ? SSL_get_verify_result(tls) : X509_V_OK;
    return result != X509_V_OK ? X509_verify_cert_error_string(result) : "";
}

Tcp::resolver::results_type Resolve(EventLoop& loop, const Connection& connection) {
    // The look-up may outlive the wait for it.
    struct Found {
        bool isDone = false;
        error_code error;
        Tcp::resolver::results_type places;
    };
    const auto found = std::make_shared<Found>();
    Tcp::resolver resolver(loop.Context());
    resolver.async_resolve(connection.address.host, std::to_string(connection.address.port),
                           [found](const error_code& error, const Tcp::resolver::results_type& places) {
                               *found = {true, error, places};
                           });
    const std::string name = "the name " + connection.address.host;
    if (!loop.WaitFor(connection.patience, [&found] { return found->isDone; }))
        throw NoConnection(connection, name + " is not found in time");
    if (found->error)
        throw NoConnection(connection, name + " is not known (" + found->error.message() + ")");
    return found->places;
}

/// What certificates are checked against.
boost::asio::ssl::context MakeTls(const Connection& connection) {
    using boost::asio::ssl::context;
    context tls(context::tls_client);
    tls.set_options(context::default_workarounds | context::no_tlsv1 | context::no_tlsv1_1);
    tls.set_verify_mode(boost::asio::ssl::verify_peer);
    error_code error;
    if (connection.caFile.empty())
        tls.set_default_verify_paths(error);
    else
        tls.load_verify_file(connection.caFile, error);
    if (error)
        throw Failure(ExitStatus::Usage,
                      "the certificates of " +
                          (connection.caFile.empty() ? "the system" : connection.caFile) +
                          " cannot be used: " + error.message(),
                      "a PEM file with the certificate of the controller's authority");
    return tls;
}

net::ClientStream MakeStream(EventLoop& loop, const Connection& connection) {
    if (!connection.address.isSecure)
        return net::ClientStream(loop.Context());
    auto tls = MakeTls(connection);
    return {loop.Context(), tls};
}

void Secure(EventLoop& loop, const Connection& connection, net::ClientStream& stream) {
    const std::string& host = connection.address.host;
    if (!stream.ExpectName(host))
        throw NoConnection(connection, "\"" + host + "\" is no name that a certificate could have");
    stream.next_layer().expires_after(connection.patience);
    const error_code error = loop.Await([&](auto done) { stream.Handshake(std::move(done)); });
    RequireConnected(error, connection, stream.Tls());
}

} // namespace

void RequireConnected(const error_code& error, const Connection& connection, SSL* tls) {
    if (!error)
        return;
    const std::string trouble = CertificateTrouble(tls);
    if (!trouble.empty())
        throw NoConnection(connection, "its certificate is not trusted: " + trouble,
                           "a certificate for " + connection.address.host +
                               " that the system trusts, or that of its authority by --ca FILE");
    if (error == boost::beast::error::timeout)
        throw NoConnection(connection, "it takes too long");
    if (error.category() == boost::asio::error::get_ssl_category())
        throw NoConnection(connection, "it does not speak TLS (" + error.message() + ")",
                           "http:// in place of https://, or a controller with TLS in its house file");
    if (error.category() ==
        boost::beast::http::make_error_code(boost::beast::http::error::end_of_stream).category())
        throw NoConnection(
            connection, "what answers is no controller, or wants TLS (" + error.message() + ")",
            "https:// in place of http:// when the controller has TLS, or another address by " +
                connection.otherAddress);
    throw NoConnection(connection, error.message());
}

net::ClientStream Connect(EventLoop& loop, const Connection& connection) {
    const auto places = Resolve(loop, connection);
    auto stream = MakeStream(loop, connection);
    stream.next_layer().expires_after(connection.patience);
    RequireConnected(
        loop.Await([&](auto done) { stream.next_layer().async_connect(places, std::move(done)); }),
        connection);
    if (connection.address.isSecure)
        Secure(loop, connection, stream);
    return stream;
}

} // namespace transport
