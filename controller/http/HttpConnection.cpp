#include "controller/http/HttpConnectionSteps.h"

namespace controller {

template class HttpConnection<HttpSocket>;
template class HttpConnection<TlsStream>;

void ServeConnection(HttpSocket socket,
                     std::shared_ptr<Connections::Place> place,
                     IHttpHandler& handler,
                     boost::asio::ssl::context* tls) {
    if (tls == nullptr) {
        auto stream = std::make_shared<HttpSocket>(std::move(socket));
        std::make_shared<HttpConnection<HttpSocket>>(std::move(stream), std::move(place), handler)->Start();
        return;
    }
    auto stream = std::make_shared<TlsStream>(std::move(socket), *tls);
    std::make_shared<HttpConnection<TlsStream>>(std::move(stream), std::move(place), handler)->Start();
}

} // namespace controller
