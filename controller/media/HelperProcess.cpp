#include "controller/media/HelperProcess.h"

#include "controller/driver/Descriptor.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <system_error>

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace controller {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kMostReport = 65536;
/// Above those that the program finds its descriptors under, so that none takes another's place.
constexpr int kOwnNumbers = 10;

[[noreturn]] void Fail(int error, const std::string& what) {
    throw std::system_error(error, std::generic_category(), what);
}

Descriptor Moved(Descriptor from) {
    Descriptor moved(::fcntl(from.Number(), F_DUPFD_CLOEXEC, kOwnNumbers)); // NOLINT(*-vararg)
    if (!moved.IsOpen())
        Fail(errno, "a descriptor for a program");
    return moved;
}

/// A file in memory, without a name.
Descriptor Memory(const std::string& content) {
    Descriptor memory = Moved(Descriptor(::memfd_create("conversion", MFD_CLOEXEC)));
    std::size_t done = 0;
    while (done < content.size()) {
        const ssize_t written = ::write(memory.Number(), content.data() + done, content.size() - done);
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            Fail(errno, "memory for a program");
        done += static_cast<std::size_t>(written);
    }
    (void)::lseek(memory.Number(), 0, SEEK_SET); // cannot fail for a file in memory
    return memory;
}

std::string ContentOf(const Descriptor& memory, std::size_t most) {
    const off_t size = ::lseek(memory.Number(), 0, SEEK_END);
    if (size < 0 || static_cast<std::size_t>(size) > most)
        return {};
    std::string content(static_cast<std::size_t>(size), '\0');
    std::size_t done = 0;
    while (done < content.size()) {
        const ssize_t read =
            ::pread(memory.Number(), content.data() + done, content.size() - done, static_cast<off_t>(done));
        if (read <= 0)
            return {};
        done += static_cast<std::size_t>(read);
    }
    return content;
}

/// What a program is started with: its descriptors, and signals as every program expects them.
class Start {
public:
    Start(const Descriptor& input, const Descriptor& output, const Descriptor& report) {
        posix_spawn_file_actions_init(&m_files);
        posix_spawn_file_actions_adddup2(&m_files, input.Number(), STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&m_files, output.Number(), STDOUT_FILENO);
        posix_spawn_file_actions_addopen(&m_files, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_adddup2(&m_files, report.Number(), STDERR_FILENO + 1);
        posix_spawn_file_actions_addclosefrom_np(&m_files, STDERR_FILENO + 2);
        posix_spawnattr_init(&m_attributes);
        sigset_t signals;
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&m_attributes, &signals);
        // A terminal's Ctrl+C is for the controller.
        posix_spawnattr_setpgroup(&m_attributes, 0);
        posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETPGROUP);
    }
    Start(const Start&) = delete;
    Start& operator=(const Start&) = delete;
    ~Start() {
        posix_spawn_file_actions_destroy(&m_files);
        posix_spawnattr_destroy(&m_attributes);
    }

    [[nodiscard]] pid_t Program(const std::filesystem::path& program, const std::vector<std::string>& words) {
        std::vector<std::string> texts{program.filename().string()};
        texts.insert(texts.end(), words.begin(), words.end());
        std::vector<char*> pointers;
        pointers.reserve(texts.size() + 1);
        for (std::string& text : texts)
            pointers.push_back(text.data());
        pointers.push_back(nullptr);
        pid_t process = -1;
        const int error =
            ::posix_spawn(&process, program.c_str(), &m_files, &m_attributes, pointers.data(), environ);
        if (error != 0)
            Fail(error, program.string() + " cannot be started");
        return process;
    }

private:
    posix_spawn_file_actions_t m_files{};
    posix_spawnattr_t m_attributes{};
};

/// All that is told until nobody can tell any more; false when the time is over before.
bool ReadReport(const Descriptor& pipe, Clock::time_point deadline, std::string& report) {
    std::array<char, 4096> piece{};
    while (report.size() < kMostReport) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
        pollfd wanted{pipe.Number(), POLLIN, 0};
        const int ready = left.count() > 0 ? ::poll(&wanted, 1, static_cast<int>(left.count())) : 0;
        if (ready < 0 && errno == EINTR)
            continue;
        if (ready <= 0)
            return false;
        const ssize_t read = ::read(pipe.Number(), piece.data(), piece.size());
        if (read < 0 && errno == EINTR)
            continue;
        if (read <= 0)
            return true;
        report.append(piece.data(), static_cast<std::size_t>(read));
    }
    return true;
}

int WaitFor(pid_t process) {
    int status = 0;
    while (::waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

std::string TroubleOf(int status, bool isKilled, std::chrono::milliseconds limit) {
    if (isKilled)
        return "took longer than " + std::to_string(limit.count() / 1000) + " s and was ended";
    if (WIFSIGNALED(status))
        return "was ended by the signal " + std::to_string(WTERMSIG(status));
    return WEXITSTATUS(status) != 0 ? "ended with the status " + std::to_string(WEXITSTATUS(status)) : "";
}

} // namespace

HelperProcess::Outcome HelperProcess::Run(const std::vector<std::string>& words,
                                          const std::string& input) const {
    const auto deadline = Clock::now() + limit;
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        Fail(errno, "a pipe for a program");
    Descriptor reads(ends[0]);
    Descriptor told = Moved(Descriptor(ends[1]));
    const Descriptor in = Memory(input);
    const Descriptor out = Memory("");
    const pid_t process = Start(in, out, told).Program(program, words);
    told.Close();
    Outcome outcome;
    const bool isInTime = ReadReport(reads, deadline, outcome.report);
    // It has told all that it had to tell; what it does beyond that is of no interest.
    if (!isInTime || outcome.report.size() >= kMostReport)
        (void)::kill(process, SIGKILL); // it may have ended meanwhile
    outcome.trouble = TroubleOf(WaitFor(process), !isInTime, limit);
    outcome.output = ContentOf(out, mostOutput);
    return outcome;
}

} // namespace controller
