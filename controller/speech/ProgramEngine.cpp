#include "controller/speech/ProgramEngine.h"

#include "controller/speech/RunProgram.h"
#include "controller/speech/Wave.h"

#include <algorithm>

#include <sys/stat.h>

namespace controller {

namespace {

void Replace(std::string& text, const std::string& what, const std::string& with) {
    for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += with.size())
        text.replace(at, what.size(), with);
}

/// What the file behind a program's name is, as far as it changes when another one is installed.
std::string FileVersion(const std::string& program) {
    std::vector<std::string> places{program};
    if (program.find('/') == std::string::npos)
        places = {"/usr/local/bin/" + program, "/usr/bin/" + program, "/bin/" + program};
    for (const std::string& place : places) {
        struct stat status {};
        if (::stat(place.c_str(), &status) == 0)
            return place + " " + std::to_string(status.st_size) + " " +
                   std::to_string(status.st_mtim.tv_sec) + "." + std::to_string(status.st_mtim.tv_nsec);
    }
    return "";
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
    std::string version = FileVersion(m_words.front());
    // What it is told is a part of what it is: nobody but the house file's author knows what it means.
    for (const std::string& word : m_words)
        version += '\n' + word;
    return version;
}

std::string ProgramEngine::Speak(const std::string& text, unsigned speed, const Patience& patience) {
    return wave::Mended(RunProgram(WordsFor(speed), text + '\n', kMostOutput, patience));
}

} // namespace controller
