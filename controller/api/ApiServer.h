#pragma once

#include "controller/api/Api.h"
#include "controller/http/HttpServer.h"

#include <cstdint>
#include <string>

namespace controller {

/// The house on the network: the API and the pages, served at the address of the house file. Driver thread
/// only.
class ApiServer {
public:
    /// Listens at once; requests are answered as soon as the driver thread runs. Throws `std::runtime_error`,
    /// which says what is wrong, when the address or port cannot be had, certificate or key cannot be used,
    /// or the address can be reached from elsewhere and the house has no token.
    ApiServer(ControllerParts parts, const HttpLimits& limits);
    ApiServer(const ApiServer&) = delete;
    ApiServer& operator=(const ApiServer&) = delete;

    /// Takes no more requests; sockets are told that the controller ends.
    void Close() { m_server.Close(); }

    /// Where the console is: "http://127.0.0.1:8765/".
    [[nodiscard]] const std::string& Address() const noexcept { return m_address; }

private:
    Api m_api;
    HttpServer m_server;
    std::string m_address;
};

} // namespace controller
