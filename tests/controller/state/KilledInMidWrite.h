#pragma once

#include <cstddef>
#include <functional>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace controller {

/// Runs `work` in a process of its own, which is killed by the first write that makes a file longer than so
/// many bytes; says whether that happened.
inline bool KilledInMidWrite(std::size_t bytes, const std::function<void()>& work) {
    const pid_t child = ::fork();
    if (child == 0) {
        const rlimit none{0, 0};
        const rlimit limit{bytes, bytes};
        (void)::setrlimit(RLIMIT_CORE, &none);
        (void)::setrlimit(RLIMIT_FSIZE, &limit);
        work();
        ::_exit(0);
    }
    int status = 0;
    (void)::waitpid(child, &status, 0);
    return WIFSIGNALED(status);
}

} // namespace controller
