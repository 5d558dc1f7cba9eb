#include "controller/audio/DeviceSearch.h"
#include "controller/audio/Output.h"
#include "controller/audio/pulse/PulseSink.h"

#include <stdexcept>
#include <string>

namespace controller::audio {

namespace {

bool IsOfSoundServer(GstElement* sink) {
    const GstElementFactory* const factory = gst_element_get_factory(sink);
    return factory != nullptr && std::string(GST_OBJECT_NAME(factory)) == "pulsesink";
}

// The obvious autoaudiosink becomes a fake sink where there is no device, without a word. Devices come
// and go, so each announcement asks anew.
GstElement* CreateElement(const OutputContext& context) {
    const GstPtr<GstDevice> device = context.devices->FindDefault(context.take);
    if (!device) {
        context.silent("this machine has no sound device, and no sound server runs");
        return MakeBin("fakesink sync=true");
    }
    GstElement* sink = gst_device_create_element(device.get(), nullptr);
    if (!sink)
        throw std::runtime_error("the default sound device cannot be used");
    if (IsOfSoundServer(sink)) {
        MarkAsAnnouncement(sink);
        LowerOthers("default", {}, context);
    }
    return sink;
}

} // namespace

Output CreateAutoOutput(const std::string& text) {
    if (!text.empty())
        throw std::invalid_argument("\"auto\" takes nothing behind it, not \"" + text + "\"");
    return CreateElement;
}

} // namespace controller::audio
