#pragma once

#include "announce/basics/Json.h"
#include "announce/definitions/Arguments.h"
#include "announce/definitions/Definitions.h"
#include "announce/house/House.h"

/// The options of `add`, `copy` and `edit` that describe an announcement.
namespace announcement_options {

/// `before`, and an option for each field.
[[nodiscard]] Options Describing(Options before);

/// The same, and the options that take something out of a list.
[[nodiscard]] Options Changing(Options before);

/// Changes what the options name and leaves the rest as it is. Throws Failure: Usage, NotFound, Ambiguous.
void Apply(const Arguments& arguments, House& house, Json& announcement);

/// Whether there is any such option.
[[nodiscard]] bool AreAny(const Arguments& arguments);

} // namespace announcement_options
