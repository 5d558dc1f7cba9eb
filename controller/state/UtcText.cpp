#include "controller/state/UtcText.h"

#include <ctime>

namespace controller {

/// By hand: every event has its time, and strftime was a twelfth of what it took to play in a thousand rooms.
std::string UtcText(std::chrono::system_clock::time_point time) {
    const auto whole = std::chrono::floor<std::chrono::seconds>(time);
    const std::time_t seconds = std::chrono::system_clock::to_time_t(whole);
    std::tm parts{};
    gmtime_r(&seconds, &parts);
    std::string text = std::to_string(parts.tm_year + 1900);
    const auto add = [&text](char separator, int number) {
        text += separator;
        text += static_cast<char>('0' + number / 10);
        text += static_cast<char>('0' + number % 10);
    };
    add('-', parts.tm_mon + 1);
    add('-', parts.tm_mday);
    add('T', parts.tm_hour);
    add(':', parts.tm_min);
    add(':', parts.tm_sec);
    text += 'Z';
    return text;
}

} // namespace controller
