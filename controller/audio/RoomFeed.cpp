#include "controller/audio/RoomFeed.h"

#include "controller/audio/SoundFormat.h"
#include "controller/audio/VolumeLaw.h"

#include <algorithm>
#include <utility>

namespace controller::audio {

RoomFeed::RoomFeed(std::shared_ptr<Timeline> timeline, std::shared_ptr<RoomSlot> slot, unsigned volume)
    : m_timeline(std::move(timeline))
    , m_slot(std::move(slot))
    , m_gain(static_cast<float>(Gain(volume)))
    , m_currentGain(m_gain) {}

void RoomFeed::SetVolume(unsigned volume) {
    m_gain = static_cast<float>(Gain(volume));
}

GstElement* RoomFeed::CreateSource() {
    GstElement* source = MakeElement("appsrc");
    GstCaps* caps = gst_caps_new_simple("audio/x-raw", "format", G_TYPE_STRING, "F32LE", "layout",
                                        G_TYPE_STRING, "interleaved", "rate", G_TYPE_INT, kRate, "channels",
                                        G_TYPE_INT, kChannels, nullptr);
    // No queue of its own: a block is asked for when the one before has been taken.
    g_object_set(source, "caps", caps, "format", GST_FORMAT_TIME, "max-bytes", guint64{kBlockBytes}, nullptr);
    gst_caps_unref(caps);
    GstAppSrcCallbacks callbacks{};
    callbacks.need_data = &RoomFeed::OnNeedData;
    gst_app_src_set_callbacks(GST_APP_SRC(source), &callbacks, this, nullptr);
    return source;
}

void RoomFeed::OnNeedData(GstAppSrc* source, guint /*size*/, gpointer feed) {
    static_cast<RoomFeed*>(feed)->Push(source);
}

void RoomFeed::Push(GstAppSrc* source) {
    const Turn turn = m_timeline->NextTurn(*m_slot);
    if (turn.kind == Turn::Kind::Abort)
        return;
    if (turn.kind == Turn::Kind::End) {
        // Refused only by a source that is shutting down, which is an end as well.
        (void)gst_app_src_end_of_stream(source);
        return;
    }
    GstBuffer* buffer = gst_buffer_new_allocate(nullptr, kBlockBytes, nullptr);
    if (!buffer)
        return;
    GstMapInfo map;
    if (gst_buffer_map(buffer, &map, GST_MAP_WRITE)) {
        Fill(turn, reinterpret_cast<float*>(map.data)); // NOLINT(*-reinterpret-cast)
        gst_buffer_unmap(buffer, &map);
    }
    GST_BUFFER_PTS(buffer) = static_cast<GstClockTime>(TimeOf(turn.frame).count());
    GST_BUFFER_DURATION(buffer) = static_cast<GstClockTime>(TimeOf(kBlockFrames).count());
    if (turn.isGap)
        GST_BUFFER_FLAG_SET(buffer, GST_BUFFER_FLAG_DISCONT);
    (void)gst_app_src_push_buffer(source, buffer); // As above.
}

void RoomFeed::Fill(const Turn& turn, float* samples) {
    std::fill_n(samples, kBlockSamples, 0.0F);
    if (turn.clip) {
        const std::int64_t silent = std::clamp<std::int64_t>(-turn.clipPosition, 0, kBlockFrames);
        turn.clip->Read(turn.clipPosition + silent, samples + silent * kChannels, kBlockFrames - silent);
    }
    const float gain = m_gain.load();
    // Silence so far: nothing can click, and the clip's first sample is heard at the volume that was set for
    // it.
    if (!turn.clip || turn.clipPosition <= 0)
        m_currentGain = gain;
    ApplyGain(turn.kind == Turn::Kind::LastBlock ? 0.0F : gain * turn.fade, samples);
}

/// A change of volume is spread over a block: at once it would click.
void RoomFeed::ApplyGain(float target, float* samples) {
    const float step = (target - m_currentGain) / static_cast<float>(kBlockFrames);
    for (std::int64_t frame = 0; frame < kBlockFrames; ++frame) {
        const float gain =
            frame + 1 == kBlockFrames ? target : m_currentGain + step * static_cast<float>(frame + 1);
        for (int channel = 0; channel < kChannels; ++channel)
            samples[frame * kChannels + channel] *= gain;
    }
    m_currentGain = target;
}

} // namespace controller::audio
