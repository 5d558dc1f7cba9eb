#pragma once

#include "announce/house/House.h"
#include "announce/output/Table.h"

/// An announcement in words.
namespace announcement_text {

/// "Kitchen 40, Garden": where it is heard, and how loud.
[[nodiscard]] std::string Rooms(const Json& announcement, House& house);

/// "Hall, Tablet": where it is shown.
[[nodiscard]] std::string Screens(const Json& announcement, House& house);

/// What the popup says: its text, or the variable that it follows.
[[nodiscard]] std::string Message(const Json& announcement);

/// All of it, a line each.
[[nodiscard]] Table Whole(const Json& announcement, House& house);

/// `announcement 5 (Dinner)`.
[[nodiscard]] std::string Title(const Json& announcement);

} // namespace announcement_text
