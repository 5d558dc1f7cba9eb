#pragma once

#include "controller/api/Api.h"
#include "controller/http/HttpServer.h"

#include <cstdint>
#include <string>
#include <vector>

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

    /// What people open, the best first: "http://192.168.1.20:8765/".
    [[nodiscard]] const std::vector<std::string>& Addresses() const noexcept { return m_addresses; }

    [[nodiscard]] std::uint16_t Port() const noexcept { return m_port; }

private:
    Api m_api;
    HttpServer m_server;
    std::uint16_t m_port = 0;
    std::vector<std::string> m_addresses;
};

} // namespace controller
