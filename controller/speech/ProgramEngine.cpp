#include "controller/speech/ProgramEngine.h"

#include "controller/speech/RunProgram.h"
#include "controller/speech/Wave.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>

#include <sys/stat.h>
#include <unistd.h>

namespace controller {

namespace {

void Replace(std::string& text, const std::string& what, const std::string& with) {
    for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += with.size())
        text.replace(at, what.size(), with);
}

/// The file that is started by a program's name; empty where there is none.
std::string FileOf(const std::string& program) {
    if (program.find('/') != std::string::npos)
        return ::access(program.c_str(), X_OK) == 0 ? program : "";
    const char* const path = std::getenv("PATH");
    std::istringstream folders(path != nullptr ? path : "/usr/local/bin:/usr/bin:/bin");
    for (std::string file; std::getline(folders, file, ':');) {
        file.append("/").append(program);
        if (::access(file.c_str(), X_OK) == 0)
            return file;
    }
    return "";
}

/// What changes when another program is installed in the file's place.
std::string FileVersion(const std::string& file) {
    struct stat status {};
    if (file.empty() || ::stat(file.c_str(), &status) != 0)
        return "";
    return file + " " + std::to_string(status.st_size) + " " + std::to_string(status.st_mtim.tv_sec) + "." +
           std::to_string(status.st_mtim.tv_nsec);
}

} // namespace

std::vector<std::string> ProgramEngine::EspeakWords() {
    return {"espeak-ng", "--stdin", "--stdout", "-b", "1", "-v", "{voice}", "-s", "{wpm}"};
}

bool ProgramEngine::TakesSpeed(const std::vector<std::string>& words) {
    return std::any_of(words.begin(), words.end(), [](const std::string& word) {
        return word.find("{speed}") != std::string::npos || word.find("{wpm}") != std::string::npos;
    });
}

ProgramEngine::ProgramEngine(const Voice& voice)
    : m_voice(voice.voice.empty() ? voice.language : voice.voice)
    , m_language(voice.language)
    , m_words(voice.engine == Voice::Engine::Espeak ? EspeakWords() : voice.command) {}

std::vector<std::string> ProgramEngine::WordsFor(unsigned speed) const {
    constexpr unsigned kUsual = 175;
    std::vector<std::string> words = m_words;
    for (std::string& word : words) {
        Replace(word, "{voice}", m_voice);
        Replace(word, "{language}", m_language);
        Replace(word, "{speed}", std::to_string(speed));
        Replace(word, "{wpm}", std::to_string(speed * kUsual / 100));
    }
    return words;
}

std::string ProgramEngine::Version() const {
    std::string version = FileVersion(FileOf(m_words.front()));
    // What it is told is a part of what it is: nobody but the house file's author knows what it means.
    for (const std::string& word : m_words)
        version += '\n' + word;
    return version;
}

std::string ProgramEngine::Trouble() const {
    return FileOf(m_words.front()).empty() ? NotInstalled(m_words.front()) : "";
}

std::string ProgramEngine::Speak(const std::string& text, unsigned speed, const Patience& patience) {
    return wave::Mended(RunProgram(WordsFor(speed), text + '\n', kMostOutput, patience));
}

} // namespace controller
