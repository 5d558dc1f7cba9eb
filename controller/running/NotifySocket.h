#pragma once

#include <string>

namespace controller {

/// The service manager's end of a datagram socket, on which it hears how the program is: lines `NAME=value`.
///
/// Written here and not taken from a library: the protocol is one datagram, and promised to stay as it is.
class NotifySocket {
public:
    /// `address` is what the service manager has put into `NOTIFY_SOCKET`: a path, or `@` and an abstract
    /// name; empty when nobody wants to hear. Throws `std::runtime_error` for any other address.
    explicit NotifySocket(const std::string& address);
    NotifySocket(const NotifySocket&) = delete;
    NotifySocket& operator=(const NotifySocket&) = delete;
    ~NotifySocket();

    [[nodiscard]] bool IsOpen() const noexcept { return m_socket >= 0; }

    /// Sends, without ever waiting; false when that was not possible. Sends nothing, and is content, when
    /// nobody wants to hear.
    [[nodiscard]] bool Send(const std::string& lines) noexcept;

private:
    std::string m_address; ///< as the system wants it
    int m_socket = -1;
};

} // namespace controller
