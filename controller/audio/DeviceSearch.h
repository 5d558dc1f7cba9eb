#pragma once

#include "controller/audio/Gst.h"

#include <functional>
#include <mutex>

namespace controller::audio {

/// Finds the machine's default sound device, anew for each announcement: cards are plugged in, and sound
/// servers end and start, without any sign that would hold for all of them. The rooms of an announcement
/// share one answer, for where there is no device a sound server is waited for. Any thread; may block.
class DeviceSearch final {
public:
    using Ask = std::function<GstPtr<GstDevice>()>;

    /// `ask` finds it, or null; without one, the machine is asked.
    explicit DeviceSearch(Ask ask = {});

    /// The device that the machine calls its default, else the first one; null if there is none. `take` is
    /// the number of the announcement's stream.
    [[nodiscard]] GstPtr<GstDevice> FindDefault(unsigned take);

    /// Whether there is a device, for nobody who would use it.
    [[nodiscard]] bool HasDevice();

private:
    const Ask m_ask;
    std::mutex m_mutex;
    unsigned m_take = 0; ///< that the answer is for; 0: none
    GstPtr<GstDevice> m_answer;
};

} // namespace controller::audio
