#include "controller/media/HelperProcess.h"

#include "tests/controller/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <system_error>

#include <sys/wait.h>
#include <unistd.h>

namespace controller {

using namespace std::chrono_literals;

namespace {

class HelperProcessTest : public testing::Test {
protected:
    static HelperProcess::Outcome Run(const std::string& script, const std::string& input = "") {
        return HelperProcess{"/bin/sh", 60s}.Run({"-c", script}, input);
    }

    static bool HasChild() { return ::waitpid(-1, nullptr, WNOHANG) >= 0; }
};

} // namespace

TEST_F(HelperProcessTest, ReadsWritesAndTells) {
    const std::string input(1000000, 'x');

    const auto outcome = Run("cat; echo told >&3", input);

    EXPECT_EQ(outcome.report, "told\n");
    EXPECT_EQ(outcome.output, input);
    EXPECT_EQ(outcome.trouble, "");
    EXPECT_FALSE(HasChild());
}

TEST_F(HelperProcessTest, GetsItsThreeDescriptorsAndNoOther) {
    const int open = ::dup2(STDERR_FILENO, 50); // one that is not closed when a program is started
    const auto outcome = Run("exec ls /proc/self/fd >&3");
    ::close(open);

    EXPECT_EQ(outcome.report, "0\n1\n2\n3\n4\n") << "the last one is of the look at them itself";
}

TEST_F(HelperProcessTest, EndsThatAreNotInGoodOrderAreTold) {
    EXPECT_EQ(Run("exit 3").trouble, "ended with the status 3");
    EXPECT_EQ(Run("kill -KILL $$").trouble, "was ended by the signal 9");
    EXPECT_EQ((HelperProcess{"/bin/sh", 50ms}.Run({"-c", "exec sleep 1000"}, "").trouble),
              "took longer than 0 s and was ended");
    EXPECT_THROW((void)HelperProcess{"/nowhere/program"}.Run({}, ""), std::system_error);
    EXPECT_FALSE(HasChild());
}

TEST_F(HelperProcessTest, TooMuchIsNotTaken) {
    EXPECT_EQ((HelperProcess{"/bin/sh", 60s, 10}.Run({"-c", "echo 12345678901"}, "").output), "");
    EXPECT_LT(Run("exec yes >&3").report.size(), 100000U);
    EXPECT_FALSE(HasChild());
}

} // namespace controller
