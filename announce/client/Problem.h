#pragma once

#include "announce/client/Http.h"

/// Throws the Failure that an answer of status 400 and above means, with the controller's own words.
[[noreturn]] void ThrowProblem(const HttpAnswer& answer);
