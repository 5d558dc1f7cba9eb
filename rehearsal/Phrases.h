#pragma once

#include "rehearsal/Step.h"
#include "rehearsal/TraceSink.h"

#include <cstddef>
#include <string>
#include <string_view>

/// A step, and a call of the agent on its host, in a few words on one line.
[[nodiscard]] std::string PhraseOf(const Step& step);
[[nodiscard]] std::string PhraseOf(const HostCall& call);

/// What a host will do from inside a call: "inside the next VqBaseDriver.DmInvalidateState the host saves".
[[nodiscard]] std::string PhraseOf(const Reaction& reaction);

/// A step of a reaction, when it is done inside this call: "meanwhile the host saves", "the room refuses: …".
[[nodiscard]] std::string PhraseInside(std::string_view call, const Step& step);

/// The end of what was done inside this call: "the room goes on".
[[nodiscard]] std::string PhraseOfGoingOn(std::string_view call);

/// What stands of a text of somebody else's in a phrase, in bytes.
constexpr std::size_t kLongestText = 200;

/// A time for people: "1.5 s".
[[nodiscard]] std::string InSeconds(VirtualTime time);

/// The text with its control characters escaped, so that it stays on one line.
[[nodiscard]] std::string OneLine(std::string_view text);
