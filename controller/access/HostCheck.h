#pragma once

#include <set>
#include <string>
#include <string_view>

namespace controller {

/// Tells requests that were meant for this server from those that a web page elsewhere makes its visitor's
/// browser send.
///
/// A page whose name has been made to lead here still sends its own name as `Host`; so only names that nobody
/// else can have are accepted: numeric addresses, `localhost`, and the machine's own name, also with
/// `.local`. A request that a page of another origin sends carries that `Origin`.
class HostCheck {
public:
    /// `machine` is the machine's name; `address` what the house file says, where that is a name.
    HostCheck(const std::string& machine, const std::string& address);

    /// The name of this machine.
    [[nodiscard]] static std::string MachineName();

    [[nodiscard]] bool IsOurs(std::string_view host) const;

    /// Whether a request with this `Origin` (empty: none) and this `Host` comes from one of our own pages, or
    /// from no page at all.
    [[nodiscard]] static bool IsSameOrigin(std::string_view origin, std::string_view host);

    /// What hosts are accepted, in words.
    [[nodiscard]] std::string Accepted() const;

private:
    std::set<std::string> m_names;
};

} // namespace controller
