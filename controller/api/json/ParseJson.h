#pragma once

#include <nlohmann/json_fwd.hpp>

#include <string>

namespace controller {

/// Parses a body. Throws `ApiError` with 400 for what is no JSON, or nests deeper than 32.
[[nodiscard]] nlohmann::json ParseJson(const std::string& text);

} // namespace controller
