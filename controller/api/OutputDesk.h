#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace controller {

/// Where rooms could be heard, for those who set the house up: what there is, and a sound there. Calls back
/// on the driver thread.
struct OutputDesk {
    struct Place {
        std::string kind; ///< "sound_server", "sound_card", "snapcast"
        std::string name;
        std::string output; ///< as `output` has it in one text
        std::string line;   ///< of the house file
        bool isDefault = false;
        std::vector<std::uint32_t> rooms; ///< those of the house that are heard there
    };
    using Found = std::function<void(const std::vector<Place>& places)>;
    /// `trouble` says why it was not heard; empty: it was.
    using Tried = std::function<void(const std::string& trouble)>;

    std::function<void(Found found)> find;
    /// Plays a short sound at one that was found.
    std::function<void(const std::string& output, unsigned volume, Tried tried)> tryOut;
};

} // namespace controller
