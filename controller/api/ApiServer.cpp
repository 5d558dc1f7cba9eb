#include "controller/api/ApiServer.h"

#include "controller/api/ServedAt.h"

#include <boost/asio/ip/address.hpp>

#include <stdexcept>

namespace controller {

namespace {

std::optional<TlsFiles> TlsOf(const House& house) {
    if (house.tls.certificate.empty())
        return std::nullopt;
    return TlsFiles{house.tls.certificate.string(), house.tls.key.string()};
}

/// Everybody may do everything where there is no token: so nobody else may come there.
void RequireSafeAddress(const House& house) {
    boost::system::error_code error;
    const auto address = boost::asio::ip::make_address(house.address, error);
    if (error || (!address.is_loopback() && house.tokens.empty()))
        throw std::runtime_error(house.address +
                                 " can be reached from other machines, and the house has no token; "
                                 "`announcement-controller token add` makes one, and 127.0.0.1 needs none");
}

} // namespace

ApiServer::ApiServer(ControllerParts parts, const HttpLimits& limits)
    : m_api(parts, &FindAsset)
    , m_server(parts.driver.Context(), m_api, parts.log, limits, TlsOf(parts.house)) {
    RequireSafeAddress(parts.house);
    m_port = m_server.Listen(parts.house.address, parts.house.port);
    m_addresses = served_at::Urls(parts.house, m_port, served_at::AddressesOfThisMachine());
}

} // namespace controller
