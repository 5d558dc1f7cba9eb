#pragma once

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

namespace controller {

/// A client that sends and reads bytes as they are, so that tests can send what no well-meaning client does.
class TestClient {
public:
    explicit TestClient(std::uint16_t port) : m_socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        const timeval patience{20, 0}; // a test that waits longer has failed
        ::setsockopt(m_socket, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
        ::setsockopt(m_socket, SOL_SOCKET, SO_SNDTIMEO, &patience, sizeof patience);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(port);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        if (::connect(m_socket, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0)
            throw std::runtime_error("cannot connect");
    }
    TestClient(const TestClient&) = delete;
    TestClient& operator=(const TestClient&) = delete;
    ~TestClient() { ::close(m_socket); }

    /// False when the other end takes no more.
    bool Send(const std::string& bytes) const {
        std::size_t done = 0;
        while (done < bytes.size()) {
            const ssize_t sent = ::send(m_socket, bytes.data() + done, bytes.size() - done, MSG_NOSIGNAL);
            if (sent <= 0)
                return false;
            done += static_cast<std::size_t>(sent);
        }
        return true;
    }

    /// One reply, head and body; what came of it when the connection ended before.
    std::string ReadReply(bool hasBody = true) {
        while (m_read.find("\r\n\r\n") == std::string::npos && ReadMore()) {
        }
        const std::size_t head = m_read.find("\r\n\r\n");
        if (head == std::string::npos)
            return Take(m_read.size());
        const std::size_t place = m_read.find("Content-Length: ");
        const std::size_t body =
            hasBody && place < head ? std::strtoul(m_read.c_str() + place + 16, nullptr, 10) : 0;
        while (m_read.size() < head + 4 + body && ReadMore()) {
        }
        return Take(head + 4 + body);
    }

    /// `count` bytes, or fewer when the connection ends.
    std::string Read(std::size_t count) {
        while (m_read.size() < count && ReadMore()) {
        }
        return Take(count);
    }

    /// Whether the other end closes, when everything it sent has been read.
    bool IsClosed() {
        while (ReadMore()) {
        }
        return m_isClosed;
    }

    /// One text frame of a server; empty when the connection ends or another kind of frame comes.
    std::string ReadText() {
        const std::string head = Read(2);
        if (head.size() < 2 || head[0] != '\x81')
            return "";
        std::size_t length = static_cast<unsigned char>(head[1]);
        for (std::size_t more = length == 126   ? 2
                                : length == 127 ? 8
                                                : 0,
                         first = 1;
             more > 0; --more, first = 0) {
            const std::string byte = Read(1);
            length = (first != 0 ? 0 : length * 256) + static_cast<unsigned char>(byte.empty() ? 0 : byte[0]);
        }
        return Read(length);
    }

private:
    bool ReadMore() {
        char bytes[65536];
        const ssize_t read = ::recv(m_socket, bytes, sizeof bytes, 0);
        m_isClosed = read == 0 || (read < 0 && errno == ECONNRESET);
        if (read <= 0)
            return false;
        m_read.append(bytes, static_cast<std::size_t>(read));
        return true;
    }

    std::string Take(std::size_t count) {
        std::string taken = m_read.substr(0, count);
        m_read.erase(0, count);
        return taken;
    }

    const int m_socket;
    std::string m_read;
    bool m_isClosed = false;
};

} // namespace controller
