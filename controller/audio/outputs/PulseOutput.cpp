#include "controller/audio/Output.h"
#include "controller/audio/pulse/PulseDesk.h"
#include "controller/audio/pulse/PulseSink.h"

#include <cmath>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace controller::audio {

namespace {

constexpr const char* kServersChoice = "default";
constexpr double kMostDecibels = -60;

struct PulseRoom {
    std::string sink;
    std::optional<Duck> duck = Duck{}; ///< nothing: others are left as they are
};

std::optional<Duck> DuckOf(const std::string& value) {
    if (value == "off" || value == "false")
        return std::nullopt;
    if (value == "pause")
        return Duck{Duck().decibels, true};
    std::istringstream number(value);
    double decibels = 0;
    if (number >> decibels && (number >> std::ws).eof() && decibels <= -1 && decibels >= kMostDecibels)
        return Duck{decibels};
    throw std::invalid_argument(
        "duck: \"" + value +
        "\" is neither off, pause nor a number of decibels from -60 to -1; -15 is usual");
}

PulseRoom PulseRoomOf(const std::string& text) {
    std::istringstream words(text);
    PulseRoom room;
    words >> room.sink;
    if (room.sink.empty())
        throw std::invalid_argument(
            "\"pulse:\" needs a sink of the sound server, such as \"pulse: default\"; "
            "`pactl list short sinks` names them");
    constexpr const char* kDuck = "duck=";
    for (std::string word; words >> word;) {
        if (word.rfind(kDuck, 0) != 0)
            throw std::invalid_argument("\"pulse: " + room.sink + "\" takes duck beside it, not \"" + word +
                                        "\"");
        room.duck = DuckOf(word.substr(std::string(kDuck).size()));
    }
    return room;
}

GstElement* OpenSink(const PulseRoom& room, const OutputContext& context) {
    const std::string reason =
        context.pulse ? context.pulse->WhyNot(room.sink) : "there is no way to the sound server";
    // So late that silence would only be told to have missed the beginning.
    if (reason == PulseDesk::kNoAnswer)
        throw std::runtime_error(reason);
    if (!reason.empty()) {
        context.silent(reason);
        return MakeBin("fakesink sync=true");
    }
    GstElement* sink = MakeElement("pulsesink");
    if (room.sink != kServersChoice)
        g_object_set(sink, "device", room.sink.c_str(), nullptr); // NOLINT(*-vararg)
    MarkAsAnnouncement(sink);
    if (room.duck)
        LowerOthers(room.sink, *room.duck, context);
    return sink;
}

Health HealthFor(const std::string& reason) {
    if (reason.empty())
        return {Health::State::Healthy, ""};
    return {reason == PulseDesk::kNoAnswer ? Health::State::Unheard : Health::State::Silent, reason};
}

} // namespace

std::vector<Health> AskPulse(const std::vector<std::string>& texts, const OutputContext& context) {
    std::vector<std::string> sinks;
    sinks.reserve(texts.size());
    for (const std::string& text : texts)
        sinks.push_back(PulseRoomOf(text).sink);
    std::vector<Health> answers;
    answers.reserve(texts.size());
    for (const std::string& reason : context.pulse->WhyNot(sinks))
        answers.push_back(HealthFor(reason));
    return answers;
}

std::vector<FoundOutput> FindSinks(const std::vector<std::string>& /*texts*/, const OutputContext& context) {
    std::vector<FoundOutput> sinks;
    const auto state = context.pulse->State();
    if (!state)
        return sinks;
    for (const auto& [sink, name] : state->names)
        if (sink != PulseDesk::kDummy)
            sinks.push_back({"sound_server", name, {"pulse", sink}, sink == state->defaultSink});
    return sinks;
}

Output CreatePulseOutput(const std::string& text) {
    const PulseRoom room = PulseRoomOf(text);
    return [room](const OutputContext& context) {
        return OpenSink(room, context);
    };
}

} // namespace controller::audio
