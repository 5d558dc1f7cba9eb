#pragma once

#include "controller/speech/HostLookup.h"
#include "controller/speech/ISpeechEngine.h"

#include <filesystem>
#include <mutex>
#include <string>

namespace controller {

/// A server that speaks the Wyoming protocol over TCP, as piper and others do. One connection for each text,
/// on which it is first asked what it is.
class WyomingEngine final : public ISpeechEngine {
public:
    /// `memory`: the file in which it is kept what the server was when it was asked last, so that what it has
    /// said is found as long as it is away.
    WyomingEngine(const Voice& voice, std::filesystem::path memory);

    [[nodiscard]] std::string Version() const override;
    [[nodiscard]] std::string
    Speak(const std::string& text, unsigned speed, const Patience& patience) override;

private:
    void Learn(const std::string& version);

    const Voice m_voice;
    HostLookup m_lookup;
    const std::filesystem::path m_memory;
    mutable std::mutex m_mutex;
    std::string m_version;
};

} // namespace controller
