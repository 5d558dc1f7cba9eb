#pragma once

#include <cstdint>
#include <memory>
#include <string>

struct addrinfo;

namespace controller {

struct HostAddresses {
    std::shared_ptr<const ::addrinfo> addresses; ///< null where there are none
    std::string error;
};

enum class AddressForm {
    Numeric, ///< Found at once, or not at all.
    Any      ///< The machine is asked, which may take as long as it likes.
};

/// Where a TCP server of that name is. Any thread.
[[nodiscard]] HostAddresses FindAddresses(const std::string& host, std::uint16_t port, AddressForm form);

} // namespace controller
