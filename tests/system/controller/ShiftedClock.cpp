// The time of day, shifted by the seconds that stand in the file CLOCK_SHIFT: preloaded, it is a machine
// whose clock somebody sets while the program runs. Every other clock stays as it is, as on such a machine.
#include <cstdlib>
#include <ctime>

#include <fcntl.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>

namespace {

long Shift() {
    const char* const name = std::getenv("CLOCK_SHIFT");
    const int file = name == nullptr ? -1 : open(name, O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return 0;
    char text[32] = {};
    const ssize_t length = read(file, text, sizeof text - 1);
    close(file);
    return length > 0 ? std::strtol(text, nullptr, 10) : 0;
}

} // namespace

extern "C" {

// The library's own names of the parameters are reserved.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)

__attribute__((visibility("default"))) int clock_gettime(clockid_t clock, timespec* time) noexcept {
    const auto result = static_cast<int>(syscall(SYS_clock_gettime, clock, time));
    if (result == 0 && (clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE))
        time->tv_sec += Shift();
    return result;
}

__attribute__((visibility("default"))) int gettimeofday(timeval* time, void*) noexcept {
    timespec now{};
    const int result = clock_gettime(CLOCK_REALTIME, &now);
    time->tv_sec = now.tv_sec;
    time->tv_usec = now.tv_nsec / 1000;
    return result;
}

__attribute__((visibility("default"))) time_t time(time_t* result) noexcept {
    timespec now{};
    (void)clock_gettime(CLOCK_REALTIME, &now); // cannot fail for this clock
    if (result != nullptr)
        *result = now.tv_sec;
    return now.tv_sec;
}

// NOLINTEND(readability-inconsistent-declaration-parameter-name)

} // extern "C"
