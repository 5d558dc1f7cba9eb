#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// What a GIF's points are compressed by. Gives as many as are wanted; `bits` is what one of them takes, 1
/// to 8. Throws `report::Refusal` when there are fewer, or the data are none.
[[nodiscard]] std::vector<std::uint8_t> UnpackLzw(const std::string& data, unsigned bits, std::size_t wanted);
