#pragma once

#include "convert/Pixels.h"
#include "picture/Blocks.h"

#include <string>
#include <string_view>
#include <vector>

/// The formats of pictures that are taken, each by the library that is known for it. What is read has passed
/// for one of the format, of a size that may be; everything throws `report::Refusal` for what is damaged.
namespace picture_formats {

/// The picture, made smaller where its longer side has more pixels than `most`.
[[nodiscard]] Pixels ReadJpeg(std::string_view content, std::uint32_t most);
[[nodiscard]] Pixels ReadPng(std::string_view content, std::uint32_t most);
/// The first picture of an animated one.
[[nodiscard]] Pixels ReadWebP(std::string_view content, std::uint32_t most);
[[nodiscard]] Pixels ReadGif(std::string_view content, std::uint32_t most);

/// With the profile of the picture that it was made of, as `picture::ProfileOf` gives it for the same format.
[[nodiscard]] std::string WriteJpeg(const Pixels& pixels, const std::vector<picture::Block>& profile);
[[nodiscard]] std::string WritePng(const Pixels& pixels, const std::vector<picture::Block>& profile);
[[nodiscard]] std::string WriteWebP(const Pixels& pixels, const std::vector<picture::Block>& profile);

} // namespace picture_formats
