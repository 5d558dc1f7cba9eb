#pragma once

#include "controller/driver/Worker.h"
#include "controller/speech/ISpeechEngine.h"
#include "controller/speech/Speech.h"

#include <filesystem>
#include <memory>
#include <string>

// The parts of `Speech` that only its own sources know.
namespace controller {

/// One recipe on its way. One thread at a time.
struct Speech::Job {
    SpeechRecipe recipe;
    Done done;
    std::size_t voice = 0;
    std::filesystem::path chime; ///< its file
    std::string chimeVersion;
    RenderedSpeech result;
    bool isAsked = false; ///< the engine has been

    void Refuse(const std::string& error, const std::string& right) {
        result.outcome = RenderedSpeech::Outcome::Refused;
        result.error = error;
        result.right = right;
    }
};

/// A voice at work.
struct Speech::Speaker {
    std::unique_ptr<ISpeechEngine> engine;
    Worker worker;
};

} // namespace controller
