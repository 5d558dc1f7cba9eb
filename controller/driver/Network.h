#pragma once

#include <boost/asio/ip/address.hpp>

#include <string>

/// Where a client's address belongs.
namespace controller::network {

/// The address; one that came over an IPv6 socket as an IPv4 address is one.
[[nodiscard]] boost::asio::ip::address Plain(const boost::asio::ip::address& given);

/// The /24 or /64 of an address, "192.0.2.0/24": whoever has one of its addresses may well have all of them.
[[nodiscard]] std::string NameOf(const boost::asio::ip::address& given);

/// The same for an address as text; the text itself where it is none.
[[nodiscard]] std::string NameOf(const std::string& address);

} // namespace controller::network
