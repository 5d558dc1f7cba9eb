#include "controller/api/ApiTime.h"

#include <array>
#include <cstdio>
#include <ctime>

namespace controller {

std::string ApiTime(std::chrono::system_clock::time_point time) {
    using std::chrono::milliseconds;
    const auto whole = std::chrono::floor<std::chrono::seconds>(time);
    const std::time_t seconds = std::chrono::system_clock::to_time_t(whole);
    const auto rest = static_cast<int>(std::chrono::duration_cast<milliseconds>(time - whole).count());
    std::tm parts{};
    gmtime_r(&seconds, &parts);
    std::array<char, 32> date{};
    (void)std::strftime(date.data(), date.size(), "%Y-%m-%dT%H:%M:%S", &parts); // always fits
    std::array<char, 8> fraction{};
    (void)std::snprintf(fraction.data(), fraction.size(), ".%03dZ", rest % 1000);
    return std::string(date.data()) + fraction.data();
}

} // namespace controller
