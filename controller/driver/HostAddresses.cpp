#include "controller/driver/HostAddresses.h"

#include <netdb.h>
#include <sys/socket.h>

namespace controller {

HostAddresses FindAddresses(const std::string& host, std::uint16_t port, AddressForm form) {
    addrinfo wanted{};
    wanted.ai_socktype = SOCK_STREAM;
    wanted.ai_flags = form == AddressForm::Numeric ? AI_NUMERICHOST : 0;
    addrinfo* found = nullptr;
    const int error = ::getaddrinfo(host.c_str(), std::to_string(port).c_str(), &wanted, &found);
    if (error != 0)
        return {nullptr, ::gai_strerror(error)};
    return {std::shared_ptr<const addrinfo>(
                found, [](const addrinfo* all) { ::freeaddrinfo(const_cast<addrinfo*>(all)); }), // NOLINT
            ""};
}

} // namespace controller
