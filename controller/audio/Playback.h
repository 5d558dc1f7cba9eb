#pragma once

#include "controller/audio/Clip.h"
#include "controller/audio/Timeline.h"
#include "controller/audio/WholeSound.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace controller::audio {

/// Decodes all of a sound into a file, as a Play of it does; null when it cannot, or is too long. Blocks.
[[nodiscard]] WholeSound::File MakeWholeSound(const std::string& path, float factor);

/// One Play: opens the file, starts its clip on the timeline, decodes ahead of the rooms. Its Run fills a
/// thread of its own.
class Playback final {
public:
    using Clock = std::chrono::steady_clock;

    struct Order {
        std::string path;
        float factor = 1; ///< on its samples
        std::int64_t leadFrames = 0;
        std::chrono::milliseconds readiness{0};
        bool isKeptWhole = false;                          ///< a file is made of it as well
        std::function<void(Clock::time_point)> onStarted;  ///< With the clip's first moment.
        std::function<void(const std::string&)> onRefused; ///< The clip never started.
    };

    Playback(std::shared_ptr<Timeline> timeline, Order order);

    void Run();

    /// Nobody listens any more: Run ends as soon as the file lets it. Any thread.
    void Abandon() { m_clip->Abandon(); }

    /// Why the clip ended before its end; empty if it did not. Any thread.
    [[nodiscard]] std::string Error() const { return m_clip->Error(); }

private:
    [[nodiscard]] bool Start();

    std::shared_ptr<Timeline> m_timeline;
    Order m_order;
    std::shared_ptr<Clip> m_clip = std::make_shared<Clip>();
};

} // namespace controller::audio
