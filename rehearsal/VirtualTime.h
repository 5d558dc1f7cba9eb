#pragma once

#include <chrono>
#include <cstdint>

/// Time as the rehearsal's host tells it: milliseconds since the run began. No real clock is ever read.
using VirtualTime = std::chrono::duration<std::uint64_t, std::milli>;
