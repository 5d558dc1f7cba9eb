#include "controller/speech/RunProgram.h"

#include "controller/driver/Text.h"
#include "controller/speech/SpeechError.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace controller {

namespace {

constexpr std::size_t kMostComplaint = 4096;
constexpr std::size_t kMostRead = std::size_t{64} * 1024;
/// So often it is looked whether a program that has printed everything has ended.
constexpr std::chrono::milliseconds kLook{5};

/// A pipe of which the child gets one end; ours never blocks.
class Pipe {
public:
    enum class Ours { Read, Write };

    explicit Pipe(Ours ours) {
        std::array<int, 2> ends{};
        if (::pipe2(ends.data(), O_CLOEXEC) != 0)
            throw SpeechError(std::string("no pipe can be made for it: ") + std::strerror(errno));
        m_ours = ends[ours == Ours::Read ? 0 : 1];
        m_theirs = ends[ours == Ours::Read ? 1 : 0];
        (void)::fcntl(m_ours, F_SETFL, O_NONBLOCK); // NOLINT(*-vararg): cannot fail for a pipe
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    ~Pipe() {
        CloseOurs();
        CloseTheirs();
    }

    [[nodiscard]] int Ours() const noexcept { return m_ours; }
    [[nodiscard]] int Theirs() const noexcept { return m_theirs; }
    void CloseOurs() noexcept { Close(m_ours); }
    void CloseTheirs() noexcept { Close(m_theirs); }

private:
    static void Close(int& end) noexcept {
        if (end >= 0)
            ::close(std::exchange(end, -1));
    }

    int m_ours = -1;
    int m_theirs = -1;
};

/// How a child is to be started.
class SpawnPlan {
public:
    SpawnPlan(int input, int output, int complaint) {
        posix_spawn_file_actions_init(&m_files);
        posix_spawn_file_actions_adddup2(&m_files, input, STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&m_files, output, STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(&m_files, complaint, STDERR_FILENO);
        posix_spawn_file_actions_addclosefrom_np(&m_files, STDERR_FILENO + 1);
        posix_spawn_file_actions_addchdir_np(&m_files, "/");
        posix_spawnattr_init(&m_attributes);
        posix_spawnattr_setflags(&m_attributes,
                                 POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
        posix_spawnattr_setpgroup(&m_attributes, 0);
        sigset_t signals;
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&m_attributes, &signals);
        sigfillset(&signals);
        posix_spawnattr_setsigdefault(&m_attributes, &signals);
    }
    SpawnPlan(const SpawnPlan&) = delete;
    SpawnPlan& operator=(const SpawnPlan&) = delete;
    ~SpawnPlan() {
        posix_spawnattr_destroy(&m_attributes);
        posix_spawn_file_actions_destroy(&m_files);
    }

    /// Gives the child's id.
    [[nodiscard]] pid_t Start(std::vector<std::string> words) const {
        std::vector<char*> arguments;
        arguments.reserve(words.size() + 1);
        for (std::string& word : words)
            arguments.push_back(word.data());
        arguments.push_back(nullptr);
        std::string path = "PATH=/usr/local/bin:/usr/bin:/bin";
        std::string language = "LC_ALL=C.UTF-8";
        std::string home = "HOME=/";
        const std::array<char*, 4> environment{path.data(), language.data(), home.data(), nullptr};
        pid_t child = -1;
        const int error = ::posix_spawnp(&child, arguments.front(), &m_files, &m_attributes, arguments.data(),
                                         environment.data());
        if (error == ENOENT)
            throw SpeechError(NotInstalled(words.front()));
        if (error != 0)
            throw SpeechError("cannot be started: " + words.front() + ": " + std::strerror(error));
        return child;
    }

private:
    posix_spawn_file_actions_t m_files{};
    posix_spawnattr_t m_attributes{};
};

/// A program that runs, and its group with it.
class Child {
public:
    explicit Child(pid_t id) : m_id(id) {}
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    /// As long as it has not been waited for, nobody else can have its number.
    ~Child() {
        (void)::kill(-m_id, SIGKILL); // there may be nobody left
        while (::waitpid(m_id, nullptr, 0) < 0 && errno == EINTR)
            continue;
    }

    [[nodiscard]] bool HasEnded() {
        return ::waitid(P_PID, static_cast<id_t>(m_id), &m_end, WEXITED | WNOHANG | WNOWAIT) == 0 &&
               m_end.si_pid == m_id;
    }

    /// How it has ended, where that is a failure.
    [[nodiscard]] std::string Failure() const {
        if (m_end.si_code != CLD_EXITED)
            return "was ended by signal " + std::to_string(m_end.si_status);
        return m_end.si_status == 0 ? "" : "failed with status " + std::to_string(m_end.si_status);
    }

private:
    const pid_t m_id;
    siginfo_t m_end{};
};

/// Input, output and what it complains of, as they go to and fro.
class ProgramTalk {
public:
    ProgramTalk(const std::string& input, std::size_t mostOutput)
        : m_input(input)
        , m_mostOutput(mostOutput) {}

    [[nodiscard]] pid_t Start(const std::vector<std::string>& words) {
        const pid_t child = SpawnPlan(m_in.Theirs(), m_out.Theirs(), m_complaints.Theirs()).Start(words);
        for (Pipe* pipe : {&m_in, &m_out, &m_complaints})
            pipe->CloseTheirs();
        return child;
    }

    /// Until it prints no more.
    void Hold(const Patience& patience) {
        while (m_out.Ours() >= 0 || m_complaints.Ours() >= 0) {
            std::vector<pollfd> ends{
                {m_in.Ours(), POLLOUT, 0}, {m_out.Ours(), POLLIN, 0}, {m_complaints.Ours(), POLLIN, 0}};
            patience.Wait(ends);
            if (ends[0].revents != 0)
                WriteSome();
            if (ends[1].revents != 0)
                ReadSome(m_out, m_output, m_mostOutput + 1);
            if (ends[2].revents != 0)
                ReadSome(m_complaints, m_complaint, kMostComplaint);
            if (m_output.size() > m_mostOutput)
                throw SpeechError("has printed more than " + std::to_string(m_mostOutput >> 20U) + " MiB");
        }
    }

    [[nodiscard]] std::string TakeOutput() { return std::move(m_output); }

    /// What it has said of its failure, last; empty when nothing.
    [[nodiscard]] std::string LastComplaint() const {
        const std::size_t end = m_complaint.find_last_not_of(" \r\n");
        if (end == std::string::npos)
            return "";
        const std::size_t begin = m_complaint.rfind('\n', end);
        return OneLine(m_complaint.substr(begin + 1, end - begin));
    }

private:
    void WriteSome() {
        const ssize_t written = ::write(m_in.Ours(), m_input.data() + m_written, m_input.size() - m_written);
        if (written > 0)
            m_written += static_cast<std::size_t>(written);
        // It need not take everything.
        const bool isLost = written < 0 && errno != EAGAIN && errno != EINTR;
        if (m_written == m_input.size() || isLost)
            m_in.CloseOurs();
    }

    /// What is beyond `most` is dropped.
    static void ReadSome(Pipe& pipe, std::string& text, std::size_t most) {
        std::array<char, kMostRead> some{};
        const ssize_t count = ::read(pipe.Ours(), some.data(), some.size());
        if (count < 0 && (errno == EAGAIN || errno == EINTR))
            return;
        if (count <= 0)
            pipe.CloseOurs();
        else
            text.append(some.data(), std::min(static_cast<std::size_t>(count), most - text.size()));
    }

    const std::string& m_input;
    const std::size_t m_mostOutput;
    Pipe m_in{Pipe::Ours::Write};
    Pipe m_out{Pipe::Ours::Read};
    Pipe m_complaints{Pipe::Ours::Read};
    std::size_t m_written = 0;
    std::string m_output;
    std::string m_complaint;
};

} // namespace

std::string NotInstalled(const std::string& program) {
    return "is not there: no program " + program + " is installed";
}

std::string RunProgram(const std::vector<std::string>& words,
                       const std::string& input,
                       std::size_t mostOutput,
                       const Patience& patience) {
    ProgramTalk talk(input, mostOutput);
    Child child(talk.Start(words));
    talk.Hold(patience);
    std::vector<pollfd> nothing;
    while (!child.HasEnded())
        patience.Wait(nothing, kLook);
    const std::string failure = child.Failure();
    if (failure.empty())
        return talk.TakeOutput();
    const std::string complaint = talk.LastComplaint();
    throw SpeechError(failure + (complaint.empty() ? "" : ": " + complaint));
}

} // namespace controller
