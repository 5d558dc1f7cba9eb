#pragma once

#include "announce/house/House.h"
#include "announce/output/Table.h"

/// An announcement in words.
namespace announcement_text {

/// What the field with this key says: "Kitchen 40, Garden" of "rooms"; empty when there is nothing to say.
[[nodiscard]] std::string Of(const std::string& key, const Json& announcement, House& house);

/// What the popup says: its text, or the variable that it follows.
[[nodiscard]] std::string Message(const Json& announcement, House& house);

/// All of it, a line each.
[[nodiscard]] Table Whole(const Json& announcement, House& house);

/// `announcement 5 (Dinner)`.
[[nodiscard]] std::string Title(const Json& announcement);

} // namespace announcement_text
