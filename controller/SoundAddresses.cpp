#include "controller/SoundAddresses.h"

#include <system_error>
#include <utility>

namespace controller {

namespace {

/// As in the table of operations.
constexpr const char* kPlace = "/api/once/";

/// Empty for an address that is none of these.
std::string NameIn(const std::string& path) {
    const std::string place = kPlace;
    return path.rfind(place, 0) == 0 ? path.substr(place.size()) : "";
}

} // namespace

std::string SoundAddresses::Offer(std::shared_ptr<const std::string> file, std::chrono::milliseconds life) {
    try {
        const std::string name = m_sounds.Add(std::move(file), life);
        return name.empty() ? "" : kPlace + name;
    } catch (const std::system_error&) {
        return {};
    }
}

void SoundAddresses::Withdraw(const std::string& path) {
    m_sounds.Remove(NameIn(path));
}

bool SoundAddresses::WasFetched(const std::string& path) const {
    return m_sounds.WasFetched(NameIn(path));
}

} // namespace controller
