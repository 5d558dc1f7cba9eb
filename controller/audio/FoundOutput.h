#pragma once

#include "controller/audio/OutputDescription.h"

#include <string>
#include <vector>

namespace controller::audio {

/// A place where a room could be heard, as it was found on this machine, or with the servers of the house.
struct FoundOutput {
    std::string kind; ///< "sound_server", "sound_card", "snapcast", "page"
    std::string name; ///< for people
    OutputDescription output;
    bool isDefault = false; ///< what its server or machine would take by itself
};

/// The output in one text, as `ParseOutput` reads it.
[[nodiscard]] std::string TextOf(const OutputDescription& output);

/// Its line in the house file: `output: {pulse: kitchen}`.
[[nodiscard]] std::string LineFor(const OutputDescription& output);

/// Whether a room with this output is heard there: what else it says, such as `duck`, does not matter.
[[nodiscard]] bool IsAt(const OutputDescription& room, const OutputDescription& place);

/// The sound cards that the kernel tells of below this folder. No card is opened: that would wake it up.
[[nodiscard]] std::vector<FoundOutput> CardsIn(const std::string& folder);

} // namespace controller::audio
