#pragma once

#include "controller/audio/Timeline.h"

#include <atomic>
#include <memory>

#include <gst/app/gstappsrc.h>

namespace controller::audio {

/// Gives one room's pipeline its sound, block by block: silence or clip, at the room's volume. SetVolume: any
/// thread; everything else happens on the pipeline's own streaming thread.
class RoomFeed final {
public:
    RoomFeed(std::shared_ptr<Timeline> timeline, std::shared_ptr<RoomSlot> slot, unsigned volume);

    /// A source element that asks this feed for its sound, floating. The feed must outlive it.
    [[nodiscard]] GstElement* CreateSource();

    void SetVolume(unsigned volume);

private:
    static void OnNeedData(GstAppSrc* source, guint size, gpointer feed);
    void Push(GstAppSrc* source);
    void Fill(const Turn& turn, float* samples);
    void ApplyGain(float target, float* samples);

    std::shared_ptr<Timeline> m_timeline;
    std::shared_ptr<RoomSlot> m_slot;
    std::atomic<float> m_gain;
    float m_currentGain;
};

} // namespace controller::audio
