#pragma once

#include "controller/speech/Patience.h"
#include "controller/speech/Voice.h"

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>

namespace controller {

/// Speaks with one voice. One thread at a time; not the driver thread.
class ISpeechEngine {
public:
    virtual ~ISpeechEngine() = default;

    /// Changes when the same text would sound otherwise. Starts nothing and waits for nobody.
    [[nodiscard]] virtual std::string Version() const = 0;

    /// Why it cannot speak, as far as that is seen without asking it; goes on from "The voice NAME". Empty
    /// where nothing is. Any thread.
    [[nodiscard]] virtual std::string Trouble() const { return {}; }

    /// The text as WAV file; `speed` in percent of the voice's own. Throws `SpeechError`, whose text goes on
    /// from "The voice NAME".
    [[nodiscard]] virtual std::string
    Speak(const std::string& text, unsigned speed, const Patience& patience) = 0;

    /// As much an engine may give: five minutes of the most that is usual.
    static constexpr std::size_t kMostOutput = std::size_t{32} << 20U;
};

/// Whether a voice can speak at any other speed than its own.
[[nodiscard]] bool HasSpeeds(const Voice& voice);

/// `folder`: where it may keep what it must know at the next start.
[[nodiscard]] std::unique_ptr<ISpeechEngine> MakeSpeechEngine(const Voice& voice,
                                                              const std::filesystem::path& folder);

} // namespace controller
