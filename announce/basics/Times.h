#pragma once

#include <cstdint>
#include <string>

/// Lengths of time and times as people write and read them.
namespace times {

/// Reads `500ms`, `1.5s`, `2 min`, `0`; `what` names it in the Failure (Usage) that is thrown else.
[[nodiscard]] std::uint32_t ReadMilliseconds(const std::string& what, const std::string& text);

/// `500 ms`, `1.5 s`, `2 min`: what ReadMilliseconds reads.
[[nodiscard]] std::string LengthText(std::uint64_t milliseconds);

/// The controller's `2026-03-01T18:30:00.250Z` as `2026-03-01 19:30:00`, in the zone of the user; as it is
/// when it is none.
[[nodiscard]] std::string LocalText(const std::string& utc);

/// The same without the day.
[[nodiscard]] std::string LocalClock(const std::string& utc);

/// From now to that time, and from that time to now, on the clock of this machine; 0 when that is past or not
/// yet come.
[[nodiscard]] std::uint64_t SecondsUntil(const std::string& utc);
[[nodiscard]] std::uint64_t SecondsSince(const std::string& utc);

} // namespace times
