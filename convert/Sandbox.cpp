#include "convert/Sandbox.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <memory>

#include <linux/landlock.h>
#include <sched.h>
#include <seccomp.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace sandbox {

namespace {

constexpr rlim_t kMostSeconds = 12;
constexpr rlim_t kMostOutput = rlim_t{36} << 20U;
constexpr rlim_t kMostFiles = 64;

void Limit(__rlimit_resource what, rlim_t most) {
    rlimit limit{};
    if (getrlimit(what, &limit) != 0)
        return;
    limit.rlim_cur = std::min(limit.rlim_max, most);
    limit.rlim_max = limit.rlim_cur;
    (void)setrlimit(what, &limit); // it is lowered, which is always allowed
}

/// What computing, threads, and reading and writing what is open take.
constexpr int kCalls[] = {
    SCMP_SYS(brk),
    SCMP_SYS(clock_getres),
    SCMP_SYS(clock_gettime),
    SCMP_SYS(clock_nanosleep),
    SCMP_SYS(close),
    SCMP_SYS(eventfd2),
    SCMP_SYS(exit),
    SCMP_SYS(exit_group),
    SCMP_SYS(fcntl),
    SCMP_SYS(fstat),
    SCMP_SYS(futex),
    SCMP_SYS(getcpu),
    SCMP_SYS(getpid),
    SCMP_SYS(getrandom),
    SCMP_SYS(getrusage),
    SCMP_SYS(gettid),
    SCMP_SYS(gettimeofday),
    SCMP_SYS(lseek),
    SCMP_SYS(madvise),
    SCMP_SYS(mmap),
    SCMP_SYS(mprotect),
    SCMP_SYS(mremap),
    SCMP_SYS(munmap),
    SCMP_SYS(nanosleep),
    SCMP_SYS(pipe2),
    SCMP_SYS(poll),
    SCMP_SYS(ppoll),
    SCMP_SYS(pread64),
    SCMP_SYS(pwrite64),
    SCMP_SYS(read),
    SCMP_SYS(restart_syscall),
    SCMP_SYS(rseq),
    SCMP_SYS(rt_sigaction),
    SCMP_SYS(rt_sigprocmask),
    SCMP_SYS(rt_sigreturn),
    SCMP_SYS(sched_getaffinity),
    SCMP_SYS(sched_yield),
    SCMP_SYS(set_robust_list),
    SCMP_SYS(sigaltstack),
    SCMP_SYS(sysinfo),
    SCMP_SYS(time),
    SCMP_SYS(uname),
    SCMP_SYS(write),
    SCMP_SYS(writev),
};

struct FilterEnd {
    void operator()(void* filter) const { seccomp_release(filter); }
};
using Filter = std::unique_ptr<void, FilterEnd>;

/// Allows the call where its first argument is this, among the bits of the mask.
bool AllowFirst(scmp_filter_ctx filter, int call, scmp_datum_t first, scmp_datum_t mask = ~scmp_datum_t{0}) {
    const scmp_arg_cmp comparison{0, SCMP_CMP_MASKED_EQ, mask, first};
    return seccomp_rule_add_array(filter, SCMP_ACT_ALLOW, call, 1, &comparison) == 0;
}

bool AllowOwnThreads(scmp_filter_ctx filter) {
    // A new thread, never a new process. What cannot be looked into is not there: the library then takes
    // the call that can.
    return seccomp_rule_add(filter, SCMP_ACT_ERRNO(ENOSYS), SCMP_SYS(clone3), 0) == 0 &&
           AllowFirst(filter, SCMP_SYS(clone), CLONE_THREAD, CLONE_THREAD) &&
           // Two ends that know nobody but each other: by these GStreamer's threads wake each other.
           AllowFirst(filter, SCMP_SYS(socketpair), AF_UNIX) &&
           AllowFirst(filter, SCMP_SYS(prctl), PR_SET_NAME) &&
           AllowFirst(filter, SCMP_SYS(tgkill), static_cast<scmp_datum_t>(getpid()));
}

bool FilterCalls() {
    const Filter filter(seccomp_init(SCMP_ACT_ERRNO(EPERM)));
    if (!filter || seccomp_attr_set(filter.get(), SCMP_FLTATR_CTL_TSYNC, 1) != 0 ||
        !AllowOwnThreads(filter.get()))
        return false;
    for (const int call : kCalls)
        // Architectures lack some of them.
        (void)seccomp_rule_add(filter.get(), SCMP_ACT_ALLOW, call, 0);
    return seccomp_load(filter.get()) == 0;
}

/// Leaves no file to be opened, made or removed.
bool LeaveFiles() {
    constexpr std::uint64_t kAll = (LANDLOCK_ACCESS_FS_MAKE_SYM << 1U) - 1;
    const landlock_ruleset_attr rules{kAll};
    const auto number =
        static_cast<int>(syscall(SYS_landlock_create_ruleset, &rules, sizeof rules, 0U)); // NOLINT(*-vararg)
    if (number < 0)
        return false;
    const bool isLeft = syscall(SYS_landlock_restrict_self, number, 0U) == 0; // NOLINT(*-vararg)
    close(number);
    return isLeft;
}

} // namespace

void SetLimits() {
    (void)prctl(PR_SET_PDEATHSIG, SIGKILL, 0, 0, 0); // NOLINT(*-vararg): nothing outlives who waits for it
    Limit(RLIMIT_CPU, kMostSeconds);
    Limit(RLIMIT_FSIZE, kMostOutput);
    Limit(RLIMIT_NOFILE, kMostFiles);
    Limit(RLIMIT_CORE, 0);
#ifndef HAS_SANITIZERS
    constexpr rlim_t kMostMemory = rlim_t{768} << 20U;
    Limit(RLIMIT_AS, kMostMemory);
#endif
}

std::string Enter() {
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0) // NOLINT(*-vararg)
        return "";
    const bool hasLeftFiles = LeaveFiles();
    const bool isFiltered = FilterCalls();
    if (isFiltered && hasLeftFiles)
        return "seccomp and landlock";
    return isFiltered ? "seccomp" : hasLeftFiles ? "landlock" : "";
}

} // namespace sandbox
