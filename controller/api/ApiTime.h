#pragma once

#include <chrono>
#include <string>

namespace controller {

/// UTC in RFC 3339, with milliseconds: "2026-03-01T18:30:00.250Z".
[[nodiscard]] std::string ApiTime(std::chrono::system_clock::time_point time);

} // namespace controller
