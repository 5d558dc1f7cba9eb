#include "controller/audio/BorrowGuard.h"

#include "controller/audio/BorrowedText.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <optional>

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace controller::audio {

namespace {

/// As large as anybody may have one.
constexpr int kPipeBytes = 1 << 20;

/// What a guard is started with: one end of the pipe, and nothing else that is ours.
class GuardStart {
public:
    explicit GuardStart(const Descriptor& input) {
        posix_spawn_file_actions_init(&m_files);
        posix_spawn_file_actions_adddup2(&m_files, input.Number(), STDIN_FILENO);
        posix_spawn_file_actions_addopen(&m_files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addclosefrom_np(&m_files, STDERR_FILENO + 1);
        posix_spawnattr_init(&m_attributes);
        // A terminal's Ctrl+C is for the controller.
        posix_spawnattr_setpgroup(&m_attributes, 0);
        posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETPGROUP);
    }
    GuardStart(const GuardStart&) = delete;
    GuardStart& operator=(const GuardStart&) = delete;
    ~GuardStart() {
        posix_spawn_file_actions_destroy(&m_files);
        posix_spawnattr_destroy(&m_attributes);
    }

    /// Gives an error number.
    [[nodiscard]] int Program(std::vector<std::string> words, pid_t& process) {
        std::vector<char*> pointers;
        pointers.reserve(words.size() + 1);
        for (std::string& word : words)
            pointers.push_back(word.data());
        pointers.push_back(nullptr);
        return ::posix_spawn(&process, pointers.front(), &m_files, &m_attributes, pointers.data(), environ);
    }

private:
    posix_spawn_file_actions_t m_files{};
    posix_spawnattr_t m_attributes{};
};

std::string KeyText(const Borrowed& entry) {
    return borrowed_text::Of({entry.kind, entry.thing, entry.property, "", ""});
}

} // namespace

BorrowGuard::BorrowGuard(std::vector<std::string> words, Log& log) : m_words(std::move(words)), m_log(log) {}

BorrowGuard::~BorrowGuard() {
    m_pipe.Close();
    if (m_process > 0)
        (void)::waitpid(m_process, nullptr, WNOHANG); // what has not ended yet is nobody's child soon
}

void BorrowGuard::Tell(const std::vector<Borrowed>& entries) {
    std::string text;
    for (const Borrowed& entry : entries) {
        text += borrowed_text::Of(entry);
        if (entry.set.empty())
            m_entries.erase(KeyText(entry));
        else
            m_entries[KeyText(entry)] = entry;
    }
    if (m_pipe.IsOpen() && Send(text))
        return;
    if (!m_entries.empty())
        Start();
}

void BorrowGuard::Start() {
    std::array<int, 2> ends{-1, -1};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        Drop(std::strerror(errno)); // NOLINT(concurrency-mt-unsafe)
        return;
    }
    const Descriptor input(ends[0]);
    m_pipe = Descriptor(ends[1]);
    // It may stand still; the house does not.
    (void)::fcntl(m_pipe.Number(), F_SETFL, O_NONBLOCK); // NOLINT(*-vararg)
    // For all that may be borrowed, since a guard that learns half of it gives that back in mid-announcement.
    (void)::fcntl(m_pipe.Number(), F_SETPIPE_SZ, kPipeBytes); // NOLINT(*-vararg)
    if (const int error = GuardStart(input).Program(m_words, m_process); error != 0) {
        m_process = -1;
        Drop(std::strerror(error)); // NOLINT(concurrency-mt-unsafe)
        return;
    }
    std::string text;
    for (const auto& [key, entry] : m_entries)
        text += borrowed_text::Of(entry);
    (void)Send(text); // a new pipe is empty, and a guard that has gone already is replaced at the next entry
}

bool BorrowGuard::Send(const std::string& text) {
    const ssize_t written = ::write(m_pipe.Number(), text.data(), text.size());
    if (written == static_cast<ssize_t>(text.size()))
        return true;
    // Half an entry is none: this one learns nothing any more.
    m_pipe.Close();
    if (m_process > 0)
        (void)::waitpid(m_process, nullptr, WNOHANG);
    m_process = -1;
    return false;
}

void BorrowGuard::Drop(const std::string& why) {
    m_pipe.Close();
    m_log.Warning(
        "Nobody gives other programs their volume back if this one is killed; that waits for its next "
        "start: the guard does not start: " +
        why);
}

} // namespace controller::audio
