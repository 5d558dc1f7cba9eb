#include "tests/controller/system/ControllerProcess.h"

#include "tests/controller/support/Within.h"

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <stdexcept>

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace controller {

namespace {

using Clock = std::chrono::steady_clock;

} // namespace

ControllerProcess::ControllerProcess(const std::vector<std::string>& arguments) {
    std::array<int, 2> input{};
    std::array<int, 2> output{};
    if (::pipe2(input.data(), O_CLOEXEC) != 0 || ::pipe2(output.data(), O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    std::vector<std::string> words{CONTROLLER_FILE};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    m_process = ::fork();
    if (m_process == 0) {
        ::dup2(input[0], STDIN_FILENO);
        ::dup2(output[1], STDOUT_FILENO);
        ::dup2(output[1], STDERR_FILENO);
        ::execv(CONTROLLER_FILE, pointers.data());
        ::_exit(127);
    }
    ::close(input[0]);
    ::close(output[1]);
    m_input = input[1];
    m_out = output[0];
    (void)std::signal(SIGPIPE, SIG_IGN);
}

ControllerProcess::~ControllerProcess() {
    CloseInput();
    if (m_process > 0) {
        ::kill(m_process, SIGKILL);
        ::waitpid(m_process, nullptr, 0);
    }
    ::close(m_out);
}

void ControllerProcess::Type(const std::string& line) const {
    const std::string whole = line + "\n";
    (void)!::write(m_input, whole.data(), whole.size());
}

void ControllerProcess::CloseInput() {
    if (m_input >= 0)
        ::close(m_input);
    m_input = -1;
}

void ControllerProcess::Signal(int signal) const {
    ::kill(m_process, signal);
}

bool ControllerProcess::ReadMore(Clock::time_point end) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
    pollfd waited{m_out, POLLIN, 0};
    if (left <= 0 || ::poll(&waited, 1, static_cast<int>(left)) <= 0)
        return false;
    std::array<char, 4096> bytes{};
    const ssize_t size = ::read(m_out, bytes.data(), bytes.size());
    if (size <= 0)
        return false;
    m_output.append(bytes.data(), static_cast<std::size_t>(size));
    return true;
}

bool ControllerProcess::WaitFor(const std::string& text) {
    const auto end = Clock::now() + kPatience;
    while (true) {
        const std::size_t place = m_output.find(text, m_seen);
        if (place != std::string::npos) {
            m_seen = place + text.size();
            return true;
        }
        if (ReadMore(end))
            continue;
        ADD_FAILURE() << "waited for \"" << text << "\"; " << State(end) << m_output;
        return false;
    }
}

int ControllerProcess::Reap() {
    if (m_process > 0)
        ::waitpid(m_process, &m_status, 0);
    m_process = -1;
    return WIFEXITED(m_status) ? WEXITSTATUS(m_status) : -WTERMSIG(m_status);
}

std::string ControllerProcess::State(Clock::time_point end) {
    if (Clock::now() >= end)
        return "the program still runs, and printed:\n";
    return "the program has ended with " + std::to_string(Reap()) + ", and printed:\n";
}

int ControllerProcess::WaitForEnd() {
    const auto end = Clock::now() + kPatience;
    while (ReadMore(end)) {
    }
    if (Clock::now() >= end) {
        ADD_FAILURE() << "waited in vain for the end of the program; it printed:\n" << m_output;
        ::kill(m_process, SIGKILL);
    }
    const int status = Reap();
    // At its end it holds what it knows against what the agent has.
    EXPECT_EQ(m_output.find("mistake of this program"), std::string::npos) << m_output;
    return status;
}

} // namespace controller
