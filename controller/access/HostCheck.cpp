#include "controller/access/HostCheck.h"

#include "controller/driver/Text.h"

#include <boost/asio/ip/address.hpp>

#include <algorithm>
#include <array>
#include <cctype>

#include <unistd.h>

namespace controller {

namespace {

bool IsPort(std::string_view text) {
    return text.size() <= 5 && std::all_of(text.begin(), text.end(),
                                           [](unsigned char letter) { return std::isdigit(letter) != 0; });
}

bool IsAddress(const std::string& text) {
    boost::system::error_code error;
    (void)boost::asio::ip::make_address(text, error);
    return !error;
}

} // namespace

HostCheck::HostCheck(const std::string& machine, const std::string& address) : m_names{"localhost"} {
    for (const std::string& name : {Lower(machine), Lower(address)}) {
        if (name.empty() || IsAddress(name))
            continue;
        m_names.insert(name);
        if (name.find('.') == std::string::npos)
            m_names.insert(name + ".local");
    }
}

std::string HostCheck::MachineName() {
    std::array<char, 256> name{};
    return ::gethostname(name.data(), name.size() - 1) == 0 ? name.data() : "";
}

bool HostCheck::IsOurs(std::string_view host) const {
    if (host.substr(0, 1) == "[") {
        const std::size_t end = host.find(']');
        if (end == std::string_view::npos)
            return false;
        const std::string_view rest = host.substr(end + 1);
        const bool isEnd = rest.empty() || (rest.front() == ':' && IsPort(rest.substr(1)));
        return isEnd && IsAddress(std::string(host.substr(1, end - 1)));
    }
    const std::size_t colon = host.find(':');
    if (colon != std::string_view::npos && !IsPort(host.substr(colon + 1)))
        return false;
    const std::string name = Lower(host.substr(0, colon));
    return m_names.count(name) != 0 || IsAddress(name);
}

bool HostCheck::IsSameOrigin(std::string_view origin, std::string_view host) {
    if (origin.empty())
        return true;
    for (const std::string_view scheme : {"http://", "https://"}) {
        if (origin.substr(0, scheme.size()) == scheme)
            return Lower(origin.substr(scheme.size())) == Lower(host);
    }
    return false;
}

std::string HostCheck::Accepted() const {
    std::string text = "a numeric address of this machine";
    for (const std::string& name : m_names)
        text += ", " + name;
    return text;
}

} // namespace controller
