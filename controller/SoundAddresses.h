#pragma once

#include "controller/audio/ISoundAddresses.h"
#include "controller/media/OneTimeSounds.h"

#include <atomic>

namespace controller {

/// The sounds of the engine that players in the house fetch, as the API serves them.
class SoundAddresses final : public audio::ISoundAddresses {
public:
    [[nodiscard]] std::string Offer(std::shared_ptr<const std::string> file,
                                    std::chrono::milliseconds life) override;
    void Withdraw(const std::string& path) override;
    [[nodiscard]] bool WasFetched(const std::string& path) const override;
    [[nodiscard]] Served GetServed() const override { return m_served.load(); }

    /// Says where that is; before it is known nothing can be fetched.
    void ServeAt(Served served) { m_served = served; }

    [[nodiscard]] OneTimeSounds& Sounds() noexcept { return m_sounds; }

private:
    OneTimeSounds m_sounds;
    std::atomic<Served> m_served{Served{}};
};

} // namespace controller
