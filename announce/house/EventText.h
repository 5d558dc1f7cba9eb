#pragma once

#include "announce/house/House.h"

/// What happens, or would happen, in words. An event and an entry of a rehearsal's timeline have the same
/// members.
namespace event_text {

/// "Kitchen is at volume 40"; of a kind that is not known, the kind and its members.
[[nodiscard]] std::string Phrase(const std::string& kind, const Json& members, House& house);

} // namespace event_text
