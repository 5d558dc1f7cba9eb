#pragma once

#include <cstdint>

/// The unit codes that go with a timer's interval, for `VqBaseDriver::AddTimer` and `ITimerManager::AddTimer`
/// alike.
enum TimerUnit : std::uint32_t {
    Milliseconds = 1,
    Seconds = 2,
};
