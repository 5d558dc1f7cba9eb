#pragma once

#include <functional>
#include <optional>
#include <string>

namespace controller {

/// What left the agent instead of an answer.
struct Thrown {
    std::string kind; ///< "const char*", "std::string", "std::exception" or "other"
    std::string text; ///< empty for "other"
};

/// Runs a call into the agent and gives what it threw, if it threw.
[[nodiscard]] std::optional<Thrown> Guarded(const std::function<void()>& call);

/// "The agent failed in <what>: <text>", for the log.
[[nodiscard]] std::string Describe(const Thrown& thrown, const std::string& what);

} // namespace controller
