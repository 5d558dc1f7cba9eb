#include "announce/commands/Editor.h"

#include "announce/basics/Failure.h"
#include "announce/commands/TextFile.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

#include <sys/wait.h>
#include <unistd.h>

namespace {

std::string Command() {
    for (const char* name : {"VISUAL", "EDITOR"}) {
        const char* const value = std::getenv(name);
        if (value != nullptr && *value != '\0')
            return value;
    }
    return "vi";
}

/// Ctrl-C in the editor is for the editor.
class SignalsLeftAlone {
public:
    SignalsLeftAlone() {
        struct sigaction ignore {};
        ignore.sa_handler = SIG_IGN;
        (void)sigaction(SIGINT, &ignore, &m_interrupt); // these cannot fail with known signals
        (void)sigaction(SIGQUIT, &ignore, &m_quit);
    }
    SignalsLeftAlone(const SignalsLeftAlone&) = delete;
    SignalsLeftAlone& operator=(const SignalsLeftAlone&) = delete;
    ~SignalsLeftAlone() {
        (void)sigaction(SIGINT, &m_interrupt, nullptr);
        (void)sigaction(SIGQUIT, &m_quit, nullptr);
    }

private:
    struct sigaction m_interrupt {};
    struct sigaction m_quit {};
};

/// Runs the command, which may have arguments of its own, with the file behind it; gives what `waitpid` does.
int Run(const std::string& command, const std::string& file) {
    const std::string line = command + " \"$@\"";
    const SignalsLeftAlone signals;
    const pid_t child = fork();
    if (child == 0) {
        struct sigaction usual {};
        usual.sa_handler = SIG_DFL;
        (void)sigaction(SIGINT, &usual, nullptr);
        (void)sigaction(SIGQUIT, &usual, nullptr);
        execl("/bin/sh", "sh", "-c", line.c_str(), "sh", file.c_str(), static_cast<char*>(nullptr));
        _exit(127);
    }
    int status = -1;
    while (child > 0 && waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

} // namespace

Editor::Editor() {
    std::error_code error;
    const auto folder = std::filesystem::temp_directory_path(error);
    m_file = ((error ? std::filesystem::path("/tmp") : folder) / "announcement-XXXXXX.yaml").string();
    const int descriptor = mkstemps(m_file.data(), 5);
    if (descriptor < 0)
        throw Failure(ExitStatus::Failed,
                      "no file can be made for the editor: " + std::string(std::strerror(errno)));
    (void)close(descriptor); // nothing has been written
}

void Editor::Discard() noexcept {
    (void)unlink(m_file.c_str()); // the editor may have taken it away
}

std::string Editor::Edit(const std::string& text) {
    // Not by text_file::Write, which would give the file the usual rights.
    std::ofstream stream(m_file, std::ios::binary | std::ios::trunc);
    stream << text;
    stream.close();
    if (!stream)
        throw Failure(ExitStatus::Failed, m_file + " cannot be written");
    const std::string command = Command();
    const int status = Run(command, m_file);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        throw Failure(ExitStatus::Failed,
                      "the editor \"" + command + "\" has failed; nothing is changed, and the text is in " +
                          m_file,
                      "an editor in VISUAL or EDITOR that waits until the text is done");
    return text_file::Read(m_file);
}
