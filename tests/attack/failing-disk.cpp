// A disk that fails under the database: preloaded, it lets one call fail as DISK_FAILS says, `KIND NUMBER
// ERROR`. KIND is `sync` or `write`, NUMBER which of those on files of the database, from 1; ERROR is `EIO`
// or `ENOSPC`, or `half` for a write that takes half of what it is given.
#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <sstream>
#include <string>

#include <dlfcn.h>
#include <sys/types.h>
#include <unistd.h>

namespace {

template <class Function>
Function Next(const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

struct Fault {
    std::string kind;
    int number = 0;
    std::string error;
};

const Fault& Due() {
    static const Fault due = [] {
        Fault fault;
        const char* const text = std::getenv("DISK_FAILS");
        std::istringstream(text != nullptr ? text : "") >> fault.kind >> fault.number >> fault.error;
        return fault;
    }();
    return due;
}

bool IsOfDatabase(int number) {
    std::array<char, PATH_MAX> path{};
    const std::string link = "/proc/self/fd/" + std::to_string(number);
    const ssize_t size = readlink(link.c_str(), path.data(), path.size());
    const std::string name(path.data(), size > 0 ? static_cast<std::size_t>(size) : 0);
    return name.find("/controller.db") != std::string::npos && name.find("-shm") == std::string::npos;
}

bool IsNow(const char* kind, int number) {
    static std::atomic<int> calls{0};
    return Due().kind == kind && IsOfDatabase(number) && ++calls == Due().number;
}

int Fail() {
    errno = Due().error == "ENOSPC" ? ENOSPC : EIO;
    return -1;
}

} // namespace

extern "C" {

// The library's own names of the parameters are reserved.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)

ssize_t write(int number, const void* bytes, size_t size) {
    static const auto next = Next<ssize_t (*)(int, const void*, size_t)>("write");
    if (!IsNow("write", number))
        return next(number, bytes, size);
    return Due().error == "half" ? next(number, bytes, size / 2) : Fail();
}

ssize_t pwrite(int number, const void* bytes, size_t size, off_t offset) {
    static const auto next = Next<ssize_t (*)(int, const void*, size_t, off_t)>("pwrite");
    if (!IsNow("write", number))
        return next(number, bytes, size, offset);
    return Due().error == "half" ? next(number, bytes, size / 2, offset) : Fail();
}

ssize_t pwrite64(int number, const void* bytes, size_t size, off64_t offset) {
    return pwrite(number, bytes, size, offset);
}

int fsync(int number) {
    static const auto next = Next<int (*)(int)>("fsync");
    return IsNow("sync", number) ? Fail() : next(number);
}

int fdatasync(int number) {
    static const auto next = Next<int (*)(int)>("fdatasync");
    return IsNow("sync", number) ? Fail() : next(number);
}

// NOLINTEND(readability-inconsistent-declaration-parameter-name)

} // extern "C"
