#pragma once

#include "announce/Json.h"
#include "announce/definitions/Arguments.h"
#include "announce/house/House.h"

/// The options of `add`, `copy` and `edit` that describe an announcement.
namespace announcement_options {

/// An announcement with nothing in it, not even a name.
[[nodiscard]] Json Nothing();

/// Changes what the options name and leaves the rest as it is. Throws Failure: Usage, NotFound, Ambiguous.
void Apply(const Arguments& arguments, House& house, Json& announcement);

/// Whether there is any such option.
[[nodiscard]] bool AreAny(const Arguments& arguments);

/// "Kitchen:40", "Kitchen": the room, as an announcement has it.
[[nodiscard]] Json ReadRoom(House& house, const std::string& text);

/// The screen, as an announcement has it.
[[nodiscard]] Json ReadScreen(House& house, const std::string& text);

/// The variable that a popup follows; null for "none".
[[nodiscard]] Json ReadVariable(House& house, const std::string& text);

/// The image of the media folder, or the address of one; empty for "none".
[[nodiscard]] std::string ReadImage(House& house, const std::string& text);

/// The sound of the media folder without ".wav"; empty for "none".
[[nodiscard]] std::string ReadSound(House& house, const std::string& text);

} // namespace announcement_options
