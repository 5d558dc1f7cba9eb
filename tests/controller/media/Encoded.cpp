#include "tests/controller/media/Encoded.h"

#include "controller/audio/Gst.h"
#include "tests/controller/support/TemporaryFolder.h"

#include <cmath>
#include <stdexcept>

namespace controller::test {

std::string Encoded(const std::string& elements, double seconds) {
    constexpr double kBuffersASecond = 48000.0 / 1024;
    audio::StartGstreamer();
    const TemporaryFolder folder;
    const std::string file = folder.Path() / "encoded";
    const std::string description = "audiotestsrc volume=0.5 samplesperbuffer=1024 num-buffers=" +
                                    std::to_string(static_cast<int>(std::ceil(seconds * kBuffersASecond))) +
                                    " ! audio/x-raw,rate=48000,channels=2 ! audioconvert ! " + elements +
                                    " ! filesink location=" + file;
    const audio::GstPtr<GstElement> pipeline(gst_parse_launch(description.c_str(), nullptr));
    if (!pipeline)
        throw std::runtime_error("no such pipeline: " + description);
    gst_element_set_state(pipeline.get(), GST_STATE_PLAYING);
    const audio::GstPtr<GstBus> bus(gst_element_get_bus(pipeline.get()));
    GstMessage* const message = gst_bus_timed_pop_filtered(
        bus.get(), 60 * GST_SECOND, static_cast<GstMessageType>(GST_MESSAGE_EOS | GST_MESSAGE_ERROR));
    const bool isDone = message != nullptr && GST_MESSAGE_TYPE(message) == GST_MESSAGE_EOS;
    if (message != nullptr)
        gst_message_unref(message);
    gst_element_set_state(pipeline.get(), GST_STATE_NULL);
    if (!isDone)
        throw std::runtime_error("not encoded: " + description);
    return TemporaryFolder::Read(file);
}

} // namespace controller::test
