#include "controller/speech/TcpStream.h"

#include "controller/speech/SpeechError.h"

#include <cerrno>
#include <cstring>
#include <utility>
#include <vector>

#include <netdb.h>
#include <sys/socket.h>
#include <unistd.h>

namespace controller {

namespace {

constexpr std::size_t kPiece = std::size_t{64} * 1024;

} // namespace

TcpStream::TcpStream(HostLookup& server, const Patience& patience) : m_patience(patience) {
    const auto addresses = server.Find(patience);
    int error = 0;
    for (const addrinfo* address = addresses.get(); address != nullptr; address = address->ai_next) {
        if (Connect(*address))
            return;
        error = errno;
    }
    throw SpeechError("cannot be reached: " + server.Name() + ": " + std::strerror(error));
}

/// False, with `errno`, where nobody answers there.
bool TcpStream::Connect(const addrinfo& address) {
    m_socket = ::socket(address.ai_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, address.ai_protocol);
    if (m_socket < 0)
        return false;
    int error = 0;
    try {
        if (::connect(m_socket, address.ai_addr, address.ai_addrlen) == 0)
            return true;
        error = errno;
        if (error == EINPROGRESS) {
            WaitFor(POLLOUT);
            socklen_t size = sizeof error;
            (void)::getsockopt(m_socket, SOL_SOCKET, SO_ERROR, &error, &size); // cannot fail for a socket
        }
    } catch (...) {
        ::close(std::exchange(m_socket, -1));
        throw;
    }
    if (error == 0)
        return true;
    ::close(std::exchange(m_socket, -1));
    errno = error;
    return false;
}

TcpStream::~TcpStream() {
    if (m_socket >= 0)
        ::close(m_socket);
}

void TcpStream::WaitFor(short events) const {
    std::vector<pollfd> one{{m_socket, events, 0}};
    do
        m_patience.Wait(one);
    while (one.front().revents == 0);
}

void TcpStream::Write(const std::string& bytes) const {
    std::size_t done = 0;
    while (done < bytes.size()) {
        WaitFor(POLLOUT);
        const ssize_t written = ::send(m_socket, bytes.data() + done, bytes.size() - done, MSG_NOSIGNAL);
        if (written < 0 && errno != EAGAIN && errno != EINTR)
            throw SpeechError(std::string("has broken off: ") + std::strerror(errno));
        done += written > 0 ? static_cast<std::size_t>(written) : 0;
    }
}

std::string TcpStream::Read() const {
    std::string bytes(kPiece, '\0');
    while (true) {
        WaitFor(POLLIN);
        const ssize_t count = ::recv(m_socket, bytes.data(), bytes.size(), 0);
        if (count < 0 && (errno == EAGAIN || errno == EINTR))
            continue;
        if (count < 0)
            throw SpeechError(std::string("has broken off: ") + std::strerror(errno));
        bytes.resize(static_cast<std::size_t>(count));
        return bytes;
    }
}

} // namespace controller
