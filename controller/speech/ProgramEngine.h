#pragma once

#include "controller/speech/ISpeechEngine.h"

#include <string>
#include <vector>

namespace controller {

/// An installed program that takes the text on standard input and gives the WAV file on standard output. In
/// its arguments `{voice}`, `{language}` and `{speed}` stand for those of the voice, and `{wpm}` for the
/// speed in words a minute, of which 175 are 100 %.
class ProgramEngine final : public ISpeechEngine {
public:
    explicit ProgramEngine(const Voice& voice);

    /// The words that start espeak-ng.
    [[nodiscard]] static std::vector<std::string> EspeakWords();

    /// Whether the words say where the speed goes.
    [[nodiscard]] static bool TakesSpeed(const std::vector<std::string>& words);

    [[nodiscard]] std::string Version() const override;
    [[nodiscard]] std::string Trouble() const override;
    [[nodiscard]] std::string
    Speak(const std::string& text, unsigned speed, const Patience& patience) override;

private:
    [[nodiscard]] std::vector<std::string> WordsFor(unsigned speed) const;

    const std::string m_voice;
    const std::string m_language;
    const std::vector<std::string> m_words;
};

} // namespace controller
