#pragma once

#include <string>
#include <string_view>

namespace controller {

[[nodiscard]] bool IsUtf8(std::string_view text) noexcept;

/// The text, each part of it that is no UTF-8 replaced by U+FFFD.
[[nodiscard]] std::string ToUtf8(std::string_view text);

} // namespace controller
