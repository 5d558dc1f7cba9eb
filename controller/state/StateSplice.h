#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace controller {

/// Whether the announcement that is this element carries the id itself under which the agent keeps it.
[[nodiscard]] bool CarriesId(const std::string& element, std::uint32_t id);

/// The agent's state, as the text that the agent's elements are written as, after one announcement alone has
/// been stored, changed or (with an empty element) removed; made without asking the agent for all the others.
/// Nothing where the text does not show the announcement's place beyond doubt. All announcements must carry
/// the ids that they are kept under.
[[nodiscard]] std::optional<std::string>
SpliceAnnouncement(const std::string& state, std::uint32_t id, const std::string& element);

} // namespace controller
