#pragma once

#include "controller/agent/AgentHost.h"

#include <cstdint>
#include <optional>
#include <string>

/// What commands and requests in the agent's own words are about.
namespace controller::raw_request {

constexpr const char* kAdd = "add_announcement";

/// The parameters of `kAdd`, without the id that the description may carry. The agent would keep it as the
/// announcement's own beside the one that it answers, save it under it, and drop it at the next start when
/// another announcement has that id.
[[nodiscard]] Parameters WithoutOwnId(Parameters parameters);

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
