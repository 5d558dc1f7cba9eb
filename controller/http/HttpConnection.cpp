#include "controller/http/HttpConnectionSteps.h"

namespace controller {

template class HttpConnection<HttpStream>;

void ServeConnection(HttpSocket socket,
                     std::shared_ptr<Connections::Place> place,
                     IHttpHandler& handler,
                     boost::asio::ssl::context* tls) {
    auto stream = std::make_shared<HttpStream>(std::move(socket), tls);
    std::make_shared<HttpConnection<HttpStream>>(std::move(stream), std::move(place), handler)->Start();
}

} // namespace controller
