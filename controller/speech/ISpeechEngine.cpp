#include "controller/speech/ISpeechEngine.h"

#include "controller/speech/ProgramEngine.h"
#include "controller/speech/WyomingEngine.h"

namespace controller {

bool HasSpeeds(const Voice& voice) {
    if (voice.engine == Voice::Engine::Wyoming)
        return false;
    return voice.engine == Voice::Engine::Espeak || ProgramEngine::TakesSpeed(voice.command);
}

std::unique_ptr<ISpeechEngine> MakeSpeechEngine(const Voice& voice) {
    if (voice.engine == Voice::Engine::Wyoming)
        return std::make_unique<WyomingEngine>(voice);
    return std::make_unique<ProgramEngine>(voice);
}

} // namespace controller
