#include "announce/client/Address.h"

#include "announce/basics/Failure.h"
#include "announce/basics/Numbers.h"

#include <algorithm>

namespace {

constexpr const char* kRight =
    "an address such as http://127.0.0.1:8765, https://house.local or house.local:8765";

[[noreturn]] void Refuse(const std::string& text, const std::string& why) {
    throw Failure(ExitStatus::Usage, "address \"" + text + "\": " + why, kRight);
}

/// Takes the prefix off, when it is there.
bool TakeOff(std::string& text, const std::string& prefix) {
    if (text.rfind(prefix, 0) != 0)
        return false;
    text.erase(0, prefix.size());
    return true;
}

std::uint16_t ReadPort(const std::string& address, const std::string& text) {
    const long port = WholeNumber(text).value_or(0);
    if (port < 1 || port > 65535)
        Refuse(address, "\"" + text + "\" is no port from 1 to 65535");
    return static_cast<std::uint16_t>(port);
}

/// Splits HOST and PORT; an IPv6 address with a port stands in brackets.
std::pair<std::string, std::string> Split(const std::string& address, const std::string& text) {
    if (!text.empty() && text.front() == '[') {
        const auto end = text.find(']');
        if (end == std::string::npos || (end + 1 < text.size() && text[end + 1] != ':'))
            Refuse(address, "its brackets are not those of an IPv6 address");
        return {text.substr(1, end - 1), end + 1 < text.size() ? text.substr(end + 2) : ""};
    }
    if (std::count(text.begin(), text.end(), ':') > 1)
        return {text, ""};
    const auto colon = text.find(':');
    if (colon == std::string::npos)
        return {text, ""};
    if (colon + 1 == text.size())
        Refuse(address, "the port behind the colon is missing");
    return {text.substr(0, colon), text.substr(colon + 1)};
}

} // namespace

Address Address::Read(const std::string& text) {
    std::string rest = text;
    Address address;
    address.isSecure = TakeOff(rest, "https://");
    if (!address.isSecure && !TakeOff(rest, "http://") && rest.find("://") != std::string::npos)
        Refuse(text, "it begins with neither http:// nor https://");
    if (!rest.empty() && rest.back() == '/')
        rest.pop_back();
    if (rest.find_first_of("/?#@ \t\r\n") != std::string::npos)
        Refuse(text, "behind the port nothing may stand, and no user before the host");
    const auto [host, port] = Split(text, rest);
    if (host.empty())
        Refuse(text, "the host is missing");
    address.host = host;
    if (!port.empty())
        address.port = ReadPort(text, port);
    return address;
}

std::string Address::Authority() const {
    const bool isNumericSix = host.find(':') != std::string::npos;
    return (isNumericSix ? "[" + host + "]" : host) + ":" + std::to_string(port);
}

std::string Address::Text() const {
    return (isSecure ? "https://" : "http://") + Authority();
}
