#pragma once

#include "convert/MappedFile.h"

#include <nlohmann/json_fwd.hpp>

/// Writes what becomes of the picture to the descriptor, and behind it a thumbnail: at most 1,920 and 320
/// pixels on the longer side, upright, and without what it says of place, time and camera. What fits stays as
/// it is, pixel for pixel. Tells type and size of the picture, and of how many bytes the two are. Throws
/// `report::Refusal`.
[[nodiscard]] nlohmann::json ConvertPicture(const MappedFile& file, int output);

/// Writes but the thumbnail, also of what `ConvertPicture` would refuse as too large for screens.
[[nodiscard]] nlohmann::json MakeThumbnail(const MappedFile& file, int output);
