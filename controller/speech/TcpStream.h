#pragma once

#include "controller/speech/HostLookup.h"
#include "controller/speech/Patience.h"

#include <string>

struct addrinfo;

namespace controller {

/// A connection to a server, for which everybody waits as long as patience lasts. Everything throws
/// `SpeechError`.
class TcpStream {
public:
    TcpStream(HostLookup& server, const Patience& patience);
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
