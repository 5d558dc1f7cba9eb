#pragma once

#include "controller/agent/AgentHost.h"

#include <cstdint>
#include <optional>
#include <string>

/// What commands and requests in the agent's own words are about.
namespace controller::raw_request {

/// What a request may have changed, whatever was answered: a failed one may have stopped half-way.
struct Concern {
    std::optional<std::uint32_t> id;
    bool areAll = false; ///< it cannot be told
};
[[nodiscard]] Concern
ConcernOf(const std::string& request, const Parameters& parameters, const AgentAnswer& answer);

/// The announcement that a command asks to be played.
[[nodiscard]] std::optional<std::uint32_t> Played(const std::string& command, const Parameters& parameters);

} // namespace controller::raw_request
