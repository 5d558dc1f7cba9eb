#include "controller/audio/multicast/Zone.h"

#include "controller/driver/Text.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <system_error>

#include <arpa/inet.h>
#include <net/if.h>
#include <netinet/in.h>

namespace controller::audio {

namespace {

[[noreturn]] void Refuse(const std::string& what) {
    throw std::invalid_argument("\"multicast:\" " + what);
}

template <class Address>
void Place(Zone& zone, const Address& address) {
    std::memcpy(&zone.address, &address, sizeof address);
    zone.addressLength = sizeof address;
}

/// False when it is no numeric address of multicast.
bool ReadAddress(const std::string& text, std::uint16_t port, Zone& zone) {
    sockaddr_in four{};
    four.sin_family = AF_INET;
    four.sin_port = htons(port);
    if (inet_pton(AF_INET, text.c_str(), &four.sin_addr) == 1) {
        Place(zone, four);
        zone.place = text + ":" + std::to_string(port);
        return IN_MULTICAST(ntohl(four.sin_addr.s_addr));
    }
    sockaddr_in6 six{};
    six.sin6_family = AF_INET6;
    six.sin6_port = htons(port);
    if (text.size() < 2 || text.front() != '[' || text.back() != ']' ||
        inet_pton(AF_INET6, text.substr(1, text.size() - 2).c_str(), &six.sin6_addr) != 1)
        return false;
    Place(zone, six);
    std::array<char, INET6_ADDRSTRLEN> written{};
    (void)inet_ntop(AF_INET6, &six.sin6_addr, written.data(), written.size());
    zone.place = "[" + std::string(written.data()) + "]:" + std::to_string(port);
    zone.route.family = AF_INET6;
    return IN6_IS_ADDR_MULTICAST(&six.sin6_addr);
}

/// `name` says which of its addresses it is.
void ReadPlace(const std::string& name, const std::string& text, Zone& zone) {
    const auto colon = text.rfind(':');
    const auto port = colon == std::string::npos
                          ? std::nullopt
                          : ReadNumber<std::uint16_t>(text.substr(colon + 1), 1, 65535);
    if (!port)
        Refuse(name + "needs an address and a port, such as \"239.255.10.1:5004\", not \"" + text + "\"");
    const std::string address = text.substr(0, colon);
    if (!ReadAddress(address, *port, zone))
        Refuse(name + "\"" + address +
               "\" is no multicast address; those for use in a house are 239.0.0.0 to 239.255.255.255, and "
               "[ff05::1] and its like");
}

unsigned ReadOption(const std::string& name, const std::string& text, unsigned least, unsigned most) {
    const auto number = ReadNumber<unsigned>(text, least, most);
    if (!number)
        Refuse(name + " \"" + text + "\" is not a whole number from " + std::to_string(least) + " to " +
               std::to_string(most));
    return *number;
}

const ZoneCodec* ReadCodec(const std::string& text) {
    const auto* codec = std::find_if(kZoneCodecs.begin(), kZoneCodecs.end(),
                                     [&](const ZoneCodec& known) { return text == known.name; });
    if (codec == kZoneCodecs.end())
        Refuse("codec \"" + text + "\" is neither pcmu (G.711, for telephones) nor l16 (24 kHz, 16 bits)");
    return codec;
}

std::string ReadUrgent(const std::string& text) {
    Zone urgent;
    ReadPlace("urgent ", text, urgent);
    return urgent.place;
}

void ReadOption(const std::string& word, Zone& zone) {
    const auto equals = word.find('=');
    const std::string name = word.substr(0, equals);
    const std::string value = equals == std::string::npos ? "" : word.substr(equals + 1);
    if (name == "codec")
        zone.codec = ReadCodec(value);
    else if (name == "ttl")
        zone.route.ttl = ReadOption(name, value, 1, 255);
    else if (name == "dscp")
        zone.route.dscp = ReadOption(name, value, 0, 63);
    else if (name == "urgent")
        zone.urgent = ReadUrgent(value);
    else if (name != "interface")
        Refuse(
            "\"" + word +
            "\" is not known; behind the address there may be codec=, ttl=, dscp=, interface= and urgent=");
    else if (value.empty() || value.size() >= IF_NAMESIZE)
        Refuse("interface \"" + value + "\" is not the name of a network interface, such as eth0");
    else
        zone.route.interfaceName = value;
}

std::uint32_t NumberOf(const Zone& zone) {
    sockaddr_in four{};
    std::memcpy(&four, &zone.address, sizeof four);
    return ntohl(four.sin_addr.s_addr);
}

unsigned ScopeOfSix(const Zone& zone) {
    sockaddr_in6 six{};
    std::memcpy(&six, &zone.address, sizeof six);
    return six.sin6_addr.s6_addr[1] & 0x0fU;
}

/// As RFC 2365 and RFC 7346 give them out: within one organization, whatever routers there are.
bool IsForManyNetworks(const Zone& zone) {
    if (zone.route.family == AF_INET6)
        return ScopeOfSix(zone) >= 4;
    return NumberOf(zone) >> 18U == (239U << 24U | 192U << 16U) >> 18U;
}

bool IsForPrivateUse(const Zone& zone) {
    if (zone.route.family == AF_INET6)
        return ScopeOfSix(zone) >= 1 && ScopeOfSix(zone) <= 8;
    return NumberOf(zone) >> 24U == 239;
}

} // namespace

Zone ReadZone(const std::string& text) {
    std::istringstream stream(text);
    const std::vector<std::string> words(std::istream_iterator<std::string>(stream), {});
    Zone zone;
    ReadPlace("", words.empty() ? "" : words.front(), zone);
    for (std::size_t index = 1; index < words.size(); ++index)
        ReadOption(words[index], zone);
    if (zone.urgent == zone.place)
        Refuse("urgent \"" + zone.urgent +
               "\" is where everything goes; it must be another address, at which the same loudspeakers "
               "interrupt what they play");
    return zone;
}

std::optional<Zone> UrgentZoneOf(const Zone& zone) {
    if (zone.urgent.empty())
        return std::nullopt;
    Zone urgent = zone;
    urgent.route.family = AF_INET;
    ReadPlace("", zone.urgent, urgent);
    return urgent;
}

std::string NothingIsSentTo(const Zone& zone, int error) {
    const std::string& through = zone.route.interfaceName;
    return "nothing can be sent to " + zone.place + (through.empty() ? "" : " through " + through) + ": " +
           std::generic_category().message(error);
}

std::vector<std::string> DoubtsAbout(const Zone& zone) {
    std::vector<std::string> doubts;
    if (!IsForPrivateUse(zone))
        doubts.push_back(zone.place +
                         " is given out to the whole world; those for use in a house begin with " +
                         (zone.route.family == AF_INET6 ? "ff05" : "239"));
    else if (zone.route.ttl == 1 && IsForManyNetworks(zone))
        doubts.push_back(
            "the address " + zone.place +
            " is one for several networks, but packets with a ttl of 1 pass no router; set ttl to "
            "the number of networks that they pass");
    return doubts;
}

} // namespace controller::audio
