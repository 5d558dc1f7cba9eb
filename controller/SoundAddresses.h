#pragma once

#include "controller/audio/ISoundAddresses.h"
#include "controller/media/OneTimeSounds.h"

#include <atomic>
#include <cstdint>

namespace controller {

/// The sounds of the engine that players in the house fetch, as the API serves them.
class SoundAddresses final : public audio::ISoundAddresses {
public:
    [[nodiscard]] std::string Offer(std::shared_ptr<const std::string> file,
                                    std::chrono::milliseconds life) override;
    void Withdraw(const std::string& path) override;
    [[nodiscard]] bool WasFetched(const std::string& path) const override;
    [[nodiscard]] Served GetServed() const override { return {m_isSecure, m_port}; }

    /// Says where that is; before it is known nothing can be fetched.
    void ServeAt(Served served) {
        m_isSecure = served.isSecure;
        m_port = served.port;
    }

    [[nodiscard]] OneTimeSounds& Sounds() noexcept { return m_sounds; }

private:
    OneTimeSounds m_sounds;
    std::atomic<bool> m_isSecure{false};
    std::atomic<std::uint16_t> m_port{0};
};

} // namespace controller
