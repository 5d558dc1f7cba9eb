#pragma once

#include "controller/speech/ISpeechEngine.h"

#include <string>

namespace controller {

/// A server that speaks the Wyoming protocol over TCP, as piper and others do. One connection for each text.
class WyomingEngine final : public ISpeechEngine {
public:
    explicit WyomingEngine(const Voice& voice) : m_voice(voice) {}

    [[nodiscard]] std::string Version() const override;
    [[nodiscard]] std::string
    Speak(const std::string& text, unsigned speed, const Patience& patience) override;

private:
    const Voice m_voice;
};

} // namespace controller
