#pragma once

#include <chrono>
#include <future>
#include <stdexcept>
#include <string>

namespace controller {

/// For slow machines and sanitizers; a good run waits for what it waits for and no longer.
constexpr std::chrono::seconds kPatience{60};

/// What the future brings.
/// @throws std::runtime_error that says what was waited for, when it does not come.
template <typename Value>
Value Within(const std::string& what, std::future<Value> future) {
    if (future.wait_for(kPatience) != std::future_status::ready)
        throw std::runtime_error("waited in vain for " + what);
    return future.get();
}

} // namespace controller
