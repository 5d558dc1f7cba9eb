#pragma once

#include <string>

namespace controller::digest {

/// The text's SHA-256, in 64 hexadecimal digits.
[[nodiscard]] std::string Of(const std::string& text);

} // namespace controller::digest
