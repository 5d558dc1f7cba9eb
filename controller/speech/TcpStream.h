#pragma once

#include "controller/speech/Patience.h"

#include <cstdint>
#include <string>

struct addrinfo;

namespace controller {

/// A connection to a server, which takes as long as patience lasts. Not for the driver thread: the look-up of
/// a name blocks. Everything throws `SpeechError`.
class TcpStream {
public:
    TcpStream(const std::string& host, std::uint16_t port, const Patience& patience);
    TcpStream(const TcpStream&) = delete;
    TcpStream& operator=(const TcpStream&) = delete;
    ~TcpStream();

    void Write(const std::string& bytes) const;

    /// What has come; empty at the end.
    [[nodiscard]] std::string Read() const;

private:
    [[nodiscard]] bool Connect(const ::addrinfo& address);
    void WaitFor(short events) const;

    const Patience& m_patience;
    int m_socket = -1;
};

} // namespace controller
