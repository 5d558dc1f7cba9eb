#include "controller/api/ServedAt.h"

#include <boost/asio/ip/address.hpp>

#include <algorithm>
#include <memory>

#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>

namespace controller::served_at {

namespace {

/// A machine with many containers has many more.
constexpr std::size_t kMostUrls = 4;

bool IsV6(const std::string& address) {
    return address.find(':') != std::string::npos;
}

/// The address of an interface that is up; empty when it is none that others reach.
std::string AddressOf(const ifaddrs& interface) {
    if (interface.ifa_addr == nullptr || (interface.ifa_flags & IFF_UP) == 0)
        return "";
    // The system's own way: an address begins alike, whatever its family.
    // NOLINTBEGIN(*-reinterpret-cast)
    if (interface.ifa_addr->sa_family == AF_INET) {
        const auto& v4 = *reinterpret_cast<const sockaddr_in*>(interface.ifa_addr);
        const boost::asio::ip::address_v4 address(ntohl(v4.sin_addr.s_addr));
        const bool isOfOneCable = address.to_uint() >> 16U == 0xA9FEU; // 169.254.0.0/16
        return address.is_loopback() || isOfOneCable ? "" : address.to_string();
    }
    if (interface.ifa_addr->sa_family == AF_INET6) {
        const auto& v6 = *reinterpret_cast<const sockaddr_in6*>(interface.ifa_addr);
        boost::asio::ip::address_v6::bytes_type bytes{};
        std::copy(std::begin(v6.sin6_addr.s6_addr), std::end(v6.sin6_addr.s6_addr), bytes.begin());
        const boost::asio::ip::address_v6 address(bytes);
        return address.is_loopback() || address.is_link_local() ? "" : address.to_string();
    }
    // NOLINTEND(*-reinterpret-cast)
    return "";
}

std::string Url(const House& house, const std::string& address, std::uint16_t port) {
    return (house.tls.certificate.empty() ? "http://" : "https://") +
           (IsV6(address) ? "[" + address + "]" : address) + ":" + std::to_string(port) + "/";
}

} // namespace

std::vector<std::string> AddressesOfThisMachine() {
    ifaddrs* all = nullptr;
    if (::getifaddrs(&all) != 0)
        return {};
    const std::unique_ptr<ifaddrs, decltype(&::freeifaddrs)> owner(all, &::freeifaddrs);
    std::vector<std::string> addresses;
    for (const ifaddrs* interface = all; interface != nullptr; interface = interface->ifa_next) {
        std::string address = AddressOf(*interface);
        if (!address.empty())
            addresses.push_back(std::move(address));
    }
    std::stable_partition(addresses.begin(), addresses.end(),
                          [](const std::string& address) { return !IsV6(address); });
    return addresses;
}

std::vector<std::string>
Urls(const House& house, std::uint16_t port, const std::vector<std::string>& machine) {
    boost::system::error_code error;
    const auto address = boost::asio::ip::make_address(house.address, error);
    if (error || !address.is_unspecified())
        return {Url(house, house.address, port)};
    std::vector<std::string> urls;
    for (const std::string& one : machine) {
        if (urls.size() < kMostUrls && (address.is_v6() || !IsV6(one)))
            urls.push_back(Url(house, one, port));
    }
    urls.push_back(Url(house, "127.0.0.1", port));
    return urls;
}

} // namespace controller::served_at
