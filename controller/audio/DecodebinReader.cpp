#include "controller/audio/DecodebinReader.h"

#include "controller/audio/SoundFile.h"
#include "controller/audio/SoundFormat.h"

#include <cstring>
#include <filesystem>
#include <utility>

#include <gst/app/gstappsink.h>

namespace controller::audio {

namespace {

constexpr GstClockTime kDecoderPatience = 2 * GST_SECOND;
constexpr GstClockTime kSlice = 5 * GST_MSECOND;

GstElement* CreateDecoder(const std::string& path) {
    GError* error = nullptr;
    const std::string description =
        "filesrc name=file ! decodebin ! audioconvert ! audioresample quality=8 ! "
        "appsink name=sound sync=false max-buffers=16 "
        "caps=audio/x-raw,format=F32LE,layout=interleaved,rate=" +
        std::to_string(kRate) + ",channels=" + std::to_string(kChannels);
    GstElement* pipeline =
        gst_parse_launch_full(description.c_str(), nullptr, GST_PARSE_FLAG_FATAL_ERRORS, &error);
    if (!pipeline) {
        const std::string reason = error ? error->message : "unknown reason";
        g_clear_error(&error);
        throw SoundFileError("GStreamer cannot decode files: " + reason);
    }
    const GstPtr<GstElement> file(gst_bin_get_by_name(GST_BIN(pipeline), "file"));
    g_object_set(file.get(), "location", path.c_str(), nullptr); // NOLINT(*-vararg)
    return pipeline;
}

} // namespace

DecodebinReader::DecodebinReader(const std::string& path)
    : m_name(std::filesystem::path(path).filename().string())
    , m_pipeline(CreateDecoder(path))
    , m_sink(gst_bin_get_by_name(GST_BIN(m_pipeline.get()), "sound")) {
    gst_element_set_state(m_pipeline.get(), GST_STATE_PLAYING);
    try {
        m_first = Pull();
        if (m_first.empty())
            throw SoundFileError(m_name + ": holds no sound");
    } catch (const SoundFileError&) {
        gst_element_set_state(m_pipeline.get(), GST_STATE_NULL);
        throw;
    }
}

DecodebinReader::~DecodebinReader() {
    gst_element_set_state(m_pipeline.get(), GST_STATE_NULL);
}

std::vector<float> DecodebinReader::Read() {
    return m_first.empty() ? Pull() : std::exchange(m_first, {});
}

std::vector<float> DecodebinReader::Pull() {
    GstAppSink* sink = GST_APP_SINK(m_sink.get());
    GstSample* sample = nullptr;
    // In slices, since an error does not wake who waits for sound.
    for (GstClockTime waited = 0; !sample; waited += kSlice) {
        sample = gst_app_sink_try_pull_sample(sink, kSlice);
        if (!sample && gst_app_sink_is_eos(sink))
            return {};
        if (!sample)
            ThrowOnError(waited >= kDecoderPatience);
    }
    GstMapInfo map;
    GstBuffer* buffer = gst_sample_get_buffer(sample);
    std::vector<float> samples;
    if (buffer && gst_buffer_map(buffer, &map, GST_MAP_READ)) {
        samples.resize(map.size / sizeof(float));
        std::memcpy(samples.data(), map.data, samples.size() * sizeof(float));
        gst_buffer_unmap(buffer, &map);
    }
    gst_sample_unref(sample);
    MakeHarmless(samples);
    return samples;
}

void DecodebinReader::ThrowOnError(bool isTooLate) const {
    const GstPtr<GstBus> bus(gst_element_get_bus(m_pipeline.get()));
    GstMessage* message = gst_bus_pop_filtered(bus.get(), GST_MESSAGE_ERROR);
    if (!message && !isTooLate)
        return;
    const std::string reason = message ? ErrorText(message) : "nothing could be decoded in time";
    if (message)
        gst_message_unref(message);
    throw SoundFileError(m_name + ": not a playable sound file: " + reason);
}

} // namespace controller::audio
