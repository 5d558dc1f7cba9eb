#pragma once

#include "controller/api/json/PlayViews.h"

#include <cstdint>
#include <string>
#include <vector>

/// What playing an announcement would do: the real agent plays it on a virtual host, and nothing is heard or
/// shown.
namespace controller::rehearsal_timeline {

/// As long a playing is followed, in virtual time.
constexpr std::uint64_t kLongest = 600'000;
/// As many entries are listed.
constexpr std::size_t kMaxEntries = 10'000;

struct Order {
    Announcement announcement;
    std::uint64_t streamReadyMs = 0;       ///< how long the stream takes to be ready
    std::uint64_t soundMs = 0;             ///< how long the sound lasts
    std::string soundTrouble;              ///< why it cannot be heard; empty when it can
    std::vector<std::uint32_t> rooms;      ///< those that the house has
    std::vector<std::uint32_t> navigators; ///< likewise
};

/// Runs the module's agent; any thread. Throws `std::runtime_error` when the module cannot be loaded.
[[nodiscard]] view::Rehearsal Run(const std::string& moduleFile, const Order& order);

} // namespace controller::rehearsal_timeline
