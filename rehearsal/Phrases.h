#pragma once

#include "rehearsal/Step.h"
#include "rehearsal/TraceSink.h"

#include <string>
#include <string_view>

/// A step, and a call of the agent on its host, in a few words on one line.
[[nodiscard]] std::string PhraseOf(const Step& step);
[[nodiscard]] std::string PhraseOf(const HostCall& call);

/// A time for people: "1.5 s".
[[nodiscard]] std::string InSeconds(VirtualTime time);

/// The text with its control characters escaped, so that it stays on one line.
[[nodiscard]] std::string OneLine(std::string_view text);
