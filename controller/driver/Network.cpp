#include "controller/driver/Network.h"

#include <boost/asio/ip/network_v4.hpp>
#include <boost/asio/ip/network_v6.hpp>

namespace controller::network {

namespace ip = boost::asio::ip;

ip::address Plain(const ip::address& given) {
    if (given.is_v6() && given.to_v6().is_v4_mapped())
        return ip::make_address_v4(ip::v4_mapped, given.to_v6());
    return given;
}

std::string NameOf(const ip::address& given) {
    const ip::address plain = Plain(given);
    if (plain.is_v4())
        return ip::network_v4(plain.to_v4(), 24).canonical().to_string();
    // Without the scope, which is the machine's own name for a line.
    return ip::network_v6(ip::address_v6(plain.to_v6().to_bytes()), 64).canonical().to_string();
}

std::string NameOf(const std::string& address) {
    boost::system::error_code error;
    const auto parsed = ip::make_address(address, error);
    return error ? address : NameOf(parsed);
}

} // namespace controller::network
