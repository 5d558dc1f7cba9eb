#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// What can be told of an image, and taken out of it, without decoding it.
namespace controller::picture {

struct Size {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
};

/// By the header of a PNG or GIF; of others, and of what is cut short, nothing.
[[nodiscard]] std::optional<Size> SizeOf(std::string_view content);

/// The image without what tells where, when and by which camera it was taken, pixel for pixel: of a JPEG all
/// that applications have put in, but for what colours and orientation need; of a PNG texts, times and the
/// camera's data. Others, and what is not built as such files are, stay as they are.
[[nodiscard]] std::string WithoutPrivateData(const std::string& content);

} // namespace controller::picture
