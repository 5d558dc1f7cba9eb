#pragma once

#include <chrono>
#include <string>

namespace controller {

/// The whole second of a time, in UTC: "2026-03-01T18:30:00Z".
[[nodiscard]] std::string UtcText(std::chrono::system_clock::time_point time);

} // namespace controller
