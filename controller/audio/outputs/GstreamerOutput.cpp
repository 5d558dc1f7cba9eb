#include "controller/audio/Output.h"

#include <stdexcept>
#include <utility>

namespace controller::audio {

namespace {

class GstreamerOutput final : public IOutput {
public:
    explicit GstreamerOutput(std::string description) : m_description(std::move(description)) {}

    [[nodiscard]] GstElement* CreateElement(const OutputContext& /*context*/) const override {
        return MakeBin(m_description);
    }

private:
    std::string m_description;
};

} // namespace

std::unique_ptr<IOutput> CreateGstreamerOutput(const std::string& text) {
    if (text.empty())
        throw std::invalid_argument(
            "\"gstreamer:\" needs a bin description, such as \"gstreamer: pulsesink\"");
    try {
        GstElement* bin = MakeBin(text);
        gst_object_unref(gst_object_ref_sink(bin));
    } catch (const std::runtime_error& error) {
        throw std::invalid_argument(std::string("the GStreamer bin ") + error.what());
    }
    return std::make_unique<GstreamerOutput>(text);
}

} // namespace controller::audio
