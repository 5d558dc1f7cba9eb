#pragma once

#include "controller/audio/page/IPageSpeakers.h"
#include "controller/house/House.h"
#include "controller/rooms/ScreenSpeakers.h"

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <utility>

namespace controller {

/// The navigators whose pages rooms of this house play on.
[[nodiscard]] std::set<std::uint32_t> PagesThatPlay(const House& house);

/// The screens' pages as the engine's loudspeakers.
class PageSpeakers final : public audio::IPageSpeakers {
public:
    /// `speakers` is borrowed for life.
    explicit PageSpeakers(ScreenSpeakers& speakers) : m_speakers(speakers) {}

    [[nodiscard]] std::string WhyNot(std::uint32_t navigator) const override {
        return m_speakers.WhyNot(navigator);
    }
    void Listen(std::function<void()> onChange) override { m_speakers.Listen(std::move(onChange)); }
    void Prepare(std::uint32_t navigator, const audio::PageSound& sound) override;
    std::uint64_t Begin(
        std::uint32_t navigator, const audio::PageSound& sound, Time at, double gain, OnNews onNews) override;
    void SetGain(std::uint64_t play, double gain) override { m_speakers.SetGain(play, gain); }
    void End(std::uint64_t play) override { m_speakers.End(play); }

private:
    ScreenSpeakers& m_speakers;
};

} // namespace controller
