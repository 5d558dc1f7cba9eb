#pragma once

#include <cstddef>
#include <optional>

/// What a descriptor can show.
struct Terminal {
    bool isTerminal = false;
    bool hasColour = false;
    /// Cells in a line; nothing where lines have no end, as in pipes and files.
    std::optional<std::size_t> width;

    /// Asks the system and the environment (NO_COLOR, TERM, COLUMNS).
    [[nodiscard]] static Terminal Of(int descriptor);
};
