#pragma once

#include "host/Export.h"

#include <cstdint>
#include <string>

/// Between numbers and text, one reading for every reader: XML values, command parameters, ids in requests.
///
/// Base 10. Leading blanks (those of `isspace` in the C locale) and one sign are accepted; reading stops at
/// the first character that is no ASCII digit; no digits give 0. Nothing depends on the platform's word size
/// or locale.
namespace vq {

/// Values from -2147483648 to 4294967295 count modulo 2^32 (-1 is 4294967295), others as the nearest end of
/// that range.
[[nodiscard]] VQ_EXPORT std::uint32_t ToULong(const std::string& text) noexcept;

/// The value, or the nearest end of the signed 32-bit range.
[[nodiscard]] VQ_EXPORT std::int32_t ToLong(const std::string& text) noexcept;

/// The decimal text of a number.
[[nodiscard]] VQ_EXPORT std::string ToString(std::uint32_t number);
[[nodiscard]] VQ_EXPORT std::string ToString(std::int32_t number);

} // namespace vq
