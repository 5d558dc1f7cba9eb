#include "controller/running/NotifySocket.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <stdexcept>
#include <system_error>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace controller {

NotifySocket::NotifySocket(const std::string& address) : m_address(address) {
    if (address.empty())
        return;
    const bool isAbstract = address[0] == '@';
    if ((!isAbstract && address[0] != '/') || address.size() < 2 ||
        address.size() >= sizeof(sockaddr_un::sun_path))
        throw std::runtime_error(
            "NOTIFY_SOCKET is \"" + address +
            "\", which is no address of a service manager: it must be a path, or @ and a "
            "name");
    if (isAbstract)
        m_address[0] = '\0';
    m_socket = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (m_socket < 0)
        throw std::runtime_error("The service manager cannot be told anything: " +
                                 std::generic_category().message(errno));
}

NotifySocket::~NotifySocket() {
    if (IsOpen())
        ::close(m_socket);
}

bool NotifySocket::Send(const std::string& lines) noexcept {
    if (!IsOpen())
        return true;
    sockaddr_un to{};
    to.sun_family = AF_UNIX;
    std::copy(m_address.begin(), m_address.end(), to.sun_path);
    const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + m_address.size());
    const ssize_t sent = ::sendto(m_socket, lines.data(), lines.size(), MSG_NOSIGNAL,
                                  reinterpret_cast<const sockaddr*>(&to), length);
    return sent == static_cast<ssize_t>(lines.size());
}

} // namespace controller
