#include "controller/speech/RunProgram.h"

#include "controller/speech/SpeechError.h"
#include "tests/controller/support/TemporaryFolder.h"
#include "tests/controller/support/Within.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdlib>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace controller {

namespace {

constexpr std::size_t kMostOutput = std::size_t{1} << 20U;

class RunProgramTest : public testing::Test {
protected:
    static void SetUpTestSuite() { (void)std::signal(SIGPIPE, SIG_IGN); }

    std::string Run(const std::string& script, const std::string& input = "") {
        return RunProgram({"/bin/sh", "-c", script}, input, kMostOutput, Patience(m_stop, kPatience));
    }

    StopSignal m_stop;
};

TEST_F(RunProgramTest, GivesTheInputAndTakesTheOutputHoweverLargeBothAre) {
    const std::string large(600'000, 'x');
    EXPECT_TRUE(Run("cat", large) == large);
    EXPECT_EQ(Run("echo done", large), "done\n");
}

TEST_F(RunProgramTest, TheProgramHasNothingOfOurs) {
    const int open = ::open("/dev/null", O_RDONLY); // on purpose without O_CLOEXEC
    EXPECT_EQ(Run("for fd in 3 4 5 6 7 8 9 10 11 12; do test -e /proc/$$/fd/$fd && echo $fd; done; true"),
              "");
    ::close(open);
    ::setenv("ANNOUNCE_TEST_SECRET", "secret", 1);
    EXPECT_EQ(Run("env | cut -d= -f1 | sort | tr '\\n' ' '"), "HOME LC_ALL PATH PWD ");
    EXPECT_EQ(Run("pwd"), "/\n");
    EXPECT_EQ(Run("set -- $(cat /proc/$$/stat); test $5 -eq $$ && echo a group of its own"),
              "a group of its own\n");
}

TEST_F(RunProgramTest, ItsWholeGroupIsGoneWhenItEnds) {
    const TemporaryFolder folder;
    const std::string pipe = (folder.Path() / "pipe").string();
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const int end = ::open(pipe.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    EXPECT_EQ(Run("exec 3>" + pipe + "; (exec >&- 2>&-; echo there >&3; sleep 1000) & echo ended"),
              "ended\n");
    pollfd left{end, 0, 0};
    constexpr int kMilliseconds = std::chrono::milliseconds(kPatience).count();
    EXPECT_EQ(::poll(&left, 1, kMilliseconds), 1) << "somebody still holds the pipe";
    EXPECT_EQ(left.revents, POLLHUP);
    ::close(end);
}

TEST_F(RunProgramTest, OneThatWaitsForEverEndsWithTheSignal) {
    m_stop.Give();
    EXPECT_THROW((void)Run("sleep 1000"), SpeechError);
}

} // namespace

} // namespace controller
