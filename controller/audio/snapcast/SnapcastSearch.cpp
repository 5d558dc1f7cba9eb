#include "controller/audio/snapcast/SnapcastSearch.h"

#include "controller/driver/HostAddresses.h"

#include <boost/asio/post.hpp>

#include <cstring>
#include <system_error>
#include <thread>
#include <utility>

#include <netdb.h>

namespace controller::audio {

namespace {

LineConnection::Endpoints EndpointsOf(const HostAddresses& found) {
    LineConnection::Endpoints endpoints;
    for (const addrinfo* one = found.addresses.get(); one != nullptr; one = one->ai_next) {
        boost::asio::ip::tcp::endpoint endpoint;
        if (one->ai_addrlen > endpoint.capacity())
            continue;
        std::memcpy(endpoint.data(), one->ai_addr, one->ai_addrlen);
        endpoint.resize(one->ai_addrlen);
        endpoints.push_back(endpoint);
    }
    return endpoints;
}

} // namespace

void SearchSnapcastHost(
    const SnapcastHost& host,
    const std::shared_ptr<boost::asio::io_context>& context,
    std::function<void(const LineConnection::Endpoints& endpoints, const std::string& error)> found) {
    const auto tell = [context, found = std::move(found)](const LineConnection::Endpoints& endpoints,
                                                          const std::string& error) {
        boost::asio::post(*context, [found, endpoints, error] { found(endpoints, error); });
    };
    const auto number = FindAddresses(host.host, host.port, AddressForm::Numeric);
    if (number.addresses) {
        tell(EndpointsOf(number), "");
        return;
    }
    try {
        std::thread([tell, host] {
            const auto answer = FindAddresses(host.host, host.port, AddressForm::Any);
            tell(EndpointsOf(answer), answer.error);
        }).detach();
    } catch (const std::system_error& error) {
        tell({}, error.what());
    }
}

} // namespace controller::audio
