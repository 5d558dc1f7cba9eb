#include "controller/speech/ISpeechEngine.h"

#include "controller/speech/Digest.h"
#include "controller/speech/ProgramEngine.h"
#include "controller/speech/WyomingEngine.h"

namespace controller {

bool HasSpeeds(const Voice& voice) {
    if (voice.engine == Voice::Engine::Wyoming)
        return false;
    return voice.engine == Voice::Engine::Espeak || ProgramEngine::TakesSpeed(voice.command);
}

std::unique_ptr<ISpeechEngine> MakeSpeechEngine(const Voice& voice, const std::filesystem::path& folder) {
    if (voice.engine == Voice::Engine::Wyoming)
        return std::make_unique<WyomingEngine>(
            voice, folder / (digest::Of(voice.host + ' ' + std::to_string(voice.port) + ' ' + voice.voice) +
                             ".version"));
    return std::make_unique<ProgramEngine>(voice);
}

} // namespace controller
