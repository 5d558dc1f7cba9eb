#pragma once

#include "controller/audio/Gst.h"

#include <chrono>
#include <mutex>
#include <optional>
#include <string>

namespace controller::audio {

/// Finds the machine's default sound device. Where there is none, asking is dear (a sound server is waited
/// for, and its library loses some memory each time), so the answer "none" is kept until something that hints
/// at a device has changed, or some minutes have passed. Any thread; may block.
class DeviceSearch final {
public:
    /// The device that the machine calls its default, else the first one; null if there is none.
    [[nodiscard]] GstPtr<GstDevice> FindDefault();

private:
    using Clock = std::chrono::steady_clock;

    [[nodiscard]] bool IsStillNone(const std::string& hints) const;

    std::mutex m_mutex;
    std::optional<Clock::time_point> m_foundNone;
    std::string m_hints;
};

} // namespace controller::audio
