#include "controller/audio/DeviceSearch.h"
#include "controller/audio/Output.h"
#include "controller/audio/pulse/PulseSink.h"

#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#include <unistd.h>

namespace controller::audio {

namespace {

constexpr const char* kNoDevice = "this machine has no sound device, and no sound server runs";

bool IsOfSoundServer(GstElement* sink) {
    const GstElementFactory* const factory = gst_element_get_factory(sink);
    return factory != nullptr && std::string(GST_OBJECT_NAME(factory)) == "pulsesink";
}

// The obvious autoaudiosink becomes a fake sink where there is no device, without a word. Devices come
// and go, so each announcement asks anew.
GstElement* CreateElement(const OutputContext& context) {
    const GstPtr<GstDevice> device = context.devices->FindDefault(context.take);
    if (!device) {
        context.silent(kNoDevice);
        return MakeBin("fakesink sync=true");
    }
    GstElement* sink = gst_device_create_element(device.get(), nullptr);
    if (!sink)
        throw std::runtime_error("the default sound device cannot be used");
    if (IsOfSoundServer(sink) && context.pulse && context.pulse->WhyNot("default") == PulseDesk::kNoDevice) {
        gst_object_unref(gst_object_ref_sink(sink));
        context.silent(PulseDesk::kNoDevice);
        return MakeBin("fakesink sync=true");
    }
    if (IsOfSoundServer(sink)) {
        MarkAsAnnouncement(sink);
        LowerOthers("default", {}, context);
    }
    return sink;
}

enum class Cards { None, Forbidden, Usable };

/// Looked at from outside: who opens a card wakes it up, and some crackle then.
Cards CardsOfMachine() {
    Cards cards = Cards::None;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator("/dev/snd", error)) {
        const std::string name = entry.path().filename();
        if (name.rfind("pcm", 0) != 0 || name.back() != 'p')
            continue;
        if (access(entry.path().c_str(), R_OK | W_OK) == 0)
            return Cards::Usable;
        cards = Cards::Forbidden;
    }
    return cards;
}

Health HealthOfMachine(const OutputContext& context) {
    const std::string server = context.pulse->WhyNot("default");
    if (server.empty())
        return {Health::State::Healthy, ""};
    if (server == PulseDesk::kNoDevice)
        return {Health::State::Silent, server};
    if (server == PulseDesk::kNoAnswer)
        return {Health::State::Unheard, server};
    const Cards cards = CardsOfMachine();
    if (cards == Cards::Forbidden)
        return {Health::State::Silent,
                "this program may not use the sound card: its user must be in the group audio"};
    // What is neither a card nor this server can be looked for in full: there is nothing to wake up.
    if (cards == Cards::Usable || context.devices->HasDevice())
        return {Health::State::Healthy, ""};
    return {Health::State::Silent, kNoDevice};
}

} // namespace

std::vector<Health> AskAuto(const std::vector<std::string>& texts, const OutputContext& context) {
    return std::vector<Health>(texts.size(), HealthOfMachine(context));
}

Output CreateAutoOutput(const std::string& text) {
    if (!text.empty())
        throw std::invalid_argument("\"auto\" takes nothing behind it, not \"" + text + "\"");
    return CreateElement;
}

} // namespace controller::audio
