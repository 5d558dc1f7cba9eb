#include "convert/Sandbox.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// What a process finds that has left everything, as the number of the first thing that it can do all the
/// same; 0: nothing. No assertions: it has nothing to say them with.
int WhatIsLeft() {
    if (sandbox::Enter().empty())
        return 100; // a kernel that has neither
    if (open("/etc/passwd", O_RDONLY) >= 0)
        return 1;
    if (open("/tmp/announcement-convert-was-here", O_WRONLY | O_CREAT, 0600) >= 0)
        return 2;
    if (socket(AF_INET, SOCK_STREAM, 0) >= 0)
        return 3;
    if (socket(AF_UNIX, SOCK_STREAM, 0) >= 0)
        return 4;
    if (fork() >= 0)
        return 5;
    char* const nothing[] = {nullptr};
    if (execve("/bin/true", nothing, nothing) == 0)
        return 6;
    if (unlink("/tmp/announcement-convert-was-here") == 0)
        return 7;
    if (kill(getppid(), 0) == 0)
        return 8;
    return 0;
}

/// Runs it in a process of its own, for it cannot be undone.
template <class Work>
int StatusOf(Work work) {
    const pid_t process = fork();
    if (process == 0)
        _exit(work());
    int status = 0;
    while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

} // namespace

TEST(SandboxTest, ProcessOpensNothingReachesNobodyAndStartsNothing) {
    const int left = StatusOf(WhatIsLeft);
    if (left == 100)
        GTEST_SKIP() << "this kernel has neither seccomp nor Landlock";
    EXPECT_EQ(left, 0);
}

TEST(SandboxTest, ThreadsMemoryAndWhatIsOpenAreStillThere) {
    const int status = StatusOf([] {
        const int file = open("/dev/zero", O_RDONLY);
        if (sandbox::Enter().empty())
            return 100;
        char byte = 1;
        std::thread([&] { (void)!read(file, &byte, 1); }).join();
        const std::vector<char> large(50000000, 'x');
        return byte == 0 && large.size() == 50000000 ? 0 : 1;
    });
    if (status == 100)
        GTEST_SKIP() << "this kernel has neither seccomp nor Landlock";
    EXPECT_EQ(status, 0);
}

TEST(SandboxTest, TimeOutputAndFilesHaveBounds) {
    EXPECT_EQ(StatusOf([] {
                  sandbox::SetLimits();
                  for (const auto what : {RLIMIT_CPU, RLIMIT_FSIZE, RLIMIT_NOFILE, RLIMIT_CORE}) {
                      rlimit limit{};
                      (void)getrlimit(what, &limit);
                      if (limit.rlim_max == RLIM_INFINITY || limit.rlim_cur > limit.rlim_max)
                          return 1;
                  }
                  return 0;
              }),
              0);
}
