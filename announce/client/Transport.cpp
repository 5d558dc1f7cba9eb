#include "announce/client/Transport.h"

#include "announce/client/EventLoop.h"

#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl/error.hpp>
#include <boost/asio/ssl/host_name_verification.hpp>
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

bool IsNumeric(const std::string& host) {
    error_code error;
    (void)boost::asio::ip::make_address(host, error);
    return !error;
}

/// Why the certificate was refused; empty when it was not the certificate.
std::string CertificateTrouble(SSL* handle) {
    const long result = handle != nullptr ? SSL_get_verify_result(handle) : X509_V_OK;
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

/// Prepares the check of the peer's name, for a handshake that is to come.
void CheckName(SSL* handle, const Connection& connection) {
    const std::string& host = connection.address.host;
    X509_VERIFY_PARAM* const rules = SSL_get0_param(handle);
    const long isSet = IsNumeric(host) ? X509_VERIFY_PARAM_set1_ip_asc(rules, host.c_str())
                                       : X509_VERIFY_PARAM_set1_host(rules, host.c_str(), host.size()) &
                                             SSL_set_tlsext_host_name(handle, host.c_str());
    if (isSet != 1)
        throw NoConnection(connection, "\"" + host + "\" is no name that a certificate could have");
}

} // namespace

void RequireConnected(const error_code& error, const Connection& connection, SSL* handle) {
    if (!error)
        return;
    const std::string trouble = CertificateTrouble(handle);
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

Plain Connect(EventLoop& loop, const Connection& connection) {
    const auto places = Resolve(loop, connection);
    Plain stream(loop.Context());
    stream.expires_after(connection.patience);
    RequireConnected(loop.Await([&](auto done) { stream.async_connect(places, std::move(done)); }),
                     connection);
    return stream;
}

Secure ConnectSecurely(EventLoop& loop, const Connection& connection) {
    auto tls = MakeTls(connection);
    Secure stream(Connect(loop, connection), tls);
    CheckName(stream.native_handle(), connection);
    stream.next_layer().expires_after(connection.patience);
    const error_code error = loop.Await(
        [&](auto done) { stream.async_handshake(boost::asio::ssl::stream_base::client, std::move(done)); });
    RequireConnected(error, connection, stream.native_handle());
    return stream;
}

} // namespace transport
