#include "announce/commands/Editor.h"

#include "announce/basics/Failure.h"
#include "announce/commands/TextFile.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

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

/// As one word of the shell.
std::string Quoted(const std::string& text) {
    std::string quoted = "'";
    for (const char letter : text)
        quoted += letter == '\'' ? std::string("'\\''") : std::string(1, letter);
    return quoted + "'";
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
    // The command may have arguments of its own; while it runs, Ctrl-C is for the editor.
    if (std::system((command + " " + Quoted(m_file)).c_str()) != 0)
        throw Failure(ExitStatus::Failed,
                      "the editor \"" + command + "\" has failed; nothing is changed, and the text is in " +
                          m_file,
                      "an editor in VISUAL or EDITOR that waits until the text is done");
    return text_file::Read(m_file);
}
