#pragma once

#include "controller/house/House.h"

#include <cstdint>
#include <string>
#include <vector>

/// Where people find what the controller serves.
namespace controller::served_at {

/// The numeric addresses of this machine in its networks, IPv4 first; those that hold on one cable alone, and
/// the machine's own to itself, are left out.
[[nodiscard]] std::vector<std::string> AddressesOfThisMachine();

/// What people open, the best first: "http://192.168.1.20:8765/". `machine` is what AddressesOfThisMachine
/// gives, for a house that listens at all of them.
[[nodiscard]] std::vector<std::string>
Urls(const House& house, std::uint16_t port, const std::vector<std::string>& machine);

} // namespace controller::served_at
