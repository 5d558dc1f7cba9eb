#pragma once

#include "convert/MappedFile.h"

#include <nlohmann/json_fwd.hpp>

#include <chrono>
#include <optional>

/// The part of a sound that is wanted.
struct Span {
    std::chrono::milliseconds from{0};
    std::optional<std::chrono::milliseconds> to; ///< without it: to the end
};

/// Writes the samples of the part to the descriptor, 16 bits at 48 kHz, and gives how many frames and
/// channels there are. Throws `report::Refusal` for what cannot be decoded, and for more than 20 s.
[[nodiscard]] nlohmann::json ConvertSound(const MappedFile& file, const Span& span, int output);
