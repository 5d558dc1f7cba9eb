#pragma once

#include "picture/Blocks.h"

#include <string>
#include <vector>

namespace picture {

/// The picture, pixel for pixel, of nothing but what it takes to show it: no text, time, place, camera, nor
/// how that was held, no smaller picture, nothing that only one program knows. Colour profiles stay.
[[nodiscard]] std::string WithoutPrivateData(Type type, const std::vector<Block>& blocks);

/// The pieces with the profile of its colours, as they stand in the file, where it is one for red, green and
/// blue.
[[nodiscard]] std::vector<Block> ProfileOf(Type type, const std::vector<Block>& blocks);

} // namespace picture
