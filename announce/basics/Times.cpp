#include "announce/basics/Times.h"

#include "announce/basics/Failure.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <limits>

namespace times {
namespace {

/// How many milliseconds a unit has; 0 for what is no unit.
double UnitOf(const std::string& unit) {
    if (unit == "ms")
        return 1;
    if (unit == "s")
        return 1000;
    if (unit == "min" || unit == "m")
        return 60000;
    return 0;
}

std::string Trimmed(double number) {
    char text[32];
    (void)std::snprintf(text, sizeof text, "%.3f",
                        number); // fits: a number of milliseconds has 20 digits at most
    std::string trimmed = text;
    trimmed.erase(trimmed.find_last_not_of('0') + 1);
    if (trimmed.back() == '.')
        trimmed.pop_back();
    return trimmed;
}

/// -1 for what is none.
std::time_t MomentOf(const std::string& utc) {
    std::tm parts{};
    return strptime(utc.c_str(), "%Y-%m-%dT%H:%M:%S", &parts) == nullptr ? -1 : timegm(&parts);
}

std::uint64_t SecondsFromTo(std::time_t from, std::time_t to) {
    return from == -1 || to <= from ? 0 : static_cast<std::uint64_t>(to - from);
}

} // namespace

std::uint32_t ReadMilliseconds(const std::string& what, const std::string& text) {
    double value = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, value, std::chars_format::fixed);
    std::string unit(read.ptr, end);
    unit.erase(0, unit.find_first_not_of(' '));
    const double factor = unit.empty() && value == 0 ? 1 : UnitOf(unit);
    const double milliseconds = std::round(value * factor);
    const bool isInRange =
        !std::signbit(milliseconds) && milliseconds <= std::numeric_limits<std::uint32_t>::max();
    if (read.ec != std::errc() || factor == 0 || !isInRange)
        throw Failure(ExitStatus::Usage, what + ": \"" + text + "\" is no length of time",
                      "a number with its unit: 500ms, 1.5s, 2min; at most 4294967295ms");
    return static_cast<std::uint32_t>(milliseconds);
}

std::string LengthText(std::uint64_t milliseconds) {
    if (milliseconds < 1000)
        return std::to_string(milliseconds) + " ms";
    if (milliseconds >= 60000 && milliseconds % 60000 == 0)
        return std::to_string(milliseconds / 60000) + " min";
    return Trimmed(static_cast<double>(milliseconds) / 1000) + " s";
}

std::string LocalText(const std::string& utc) {
    std::tm parts{};
    if (strptime(utc.c_str(), "%Y-%m-%dT%H:%M:%S", &parts) == nullptr)
        return utc;
    const std::time_t seconds = timegm(&parts);
    char text[64];
    return {text, std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", localtime_r(&seconds, &parts))};
}

std::string LocalClock(const std::string& utc) {
    const std::string text = LocalText(utc);
    return text == utc ? utc : text.substr(text.find(' ') + 1);
}

std::uint64_t SecondsUntil(const std::string& utc) {
    return SecondsFromTo(std::time(nullptr), MomentOf(utc));
}

std::uint64_t SecondsSince(const std::string& utc) {
    return SecondsFromTo(MomentOf(utc), std::time(nullptr));
}

} // namespace times
