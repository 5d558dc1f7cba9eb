#include "rehearsal/JsonText.h"
#include "rehearsal/Phrases.h"
#include "rehearsal/Reaction.h"

#include <algorithm>
#include <iterator>

namespace {

/// Who it is that the agent calls there.
std::string CalledIn(std::string_view call) {
    constexpr std::pair<std::string_view, const char*> kNames[] = {
        {"VqBaseDriver.", "the host"},
        {"ITimerManager.", "the timer manager"},
        {"IDeviceManager.SendCommandToDevice", "the navigator"},
        {"IDeviceManager.", "the device manager"},
        {"IRoomProxy.", "the room"},
        {"IDigitalAudio.", "the audio service"},
        {"ILogger.", "the logger"},
    };
    const auto* const found = std::find_if(std::begin(kNames), std::end(kNames), [&](const auto& name) {
        return call.substr(0, name.first.size()) == name.first;
    });
    return found != std::end(kNames) ? found->second : "the host";
}

std::string Refusal(const Step& step) {
    const std::string text = QuotedExcerpt(step.thrownText, kLongestText);
    switch (step.thrownType) {
    case ThrownType::Characters:
        return "refuses: " + text + " (const char*)";
    case ThrownType::String:
        return "refuses: " + text + " (std::string)";
    case ThrownType::Other:
        return "refuses: " + text + " (neither const char* nor std::string)";
    }
    return {};
}

/// What the host does: "saves".
std::string Deed(const Step& step) {
    switch (step.kind) {
    case StepKind::Command:
    case StepKind::Request:
        return "sends " + PhraseOf(step);
    case StepKind::StreamReady:
    case StepKind::PlayDone:
        return "says: " + PhraseOf(step);
    case StepKind::RoomAsked:
        return "asks: " + PhraseOf(step);
    case StepKind::Save:
        return "saves";
    case StepKind::Throw:
        return Refusal(step);
    default: // the others are in no reaction
        return PhraseOf(step);
    }
}

/// "2nd".
std::string Ordinal(std::uint32_t number) {
    constexpr std::uint32_t kTen = 10;
    constexpr const char* kEndings[] = {"th", "st", "nd", "rd"};
    const bool isTeen = number / kTen % kTen == 1;
    const std::uint32_t last = number % kTen;
    return std::to_string(number) + (isTeen || last >= std::size(kEndings) ? "th" : kEndings[last]);
}

} // namespace

std::string PhraseOf(const Reaction& reaction) {
    std::string phrase = reaction.nth == 1 ? "inside the next " : "inside the " + Ordinal(reaction.nth) + " ";
    phrase.append(reaction.call).append(reaction.nth == 1 ? "" : " from here on");
    const char* separator = " the host ";
    for (const Step& step : reaction.steps) {
        phrase.append(separator).append(Deed(step));
        separator = ", then ";
    }
    return phrase;
}

std::string PhraseInside(std::string_view call, const Step& step) {
    return step.kind == StepKind::Throw ? CalledIn(call) + " " + Deed(step)
                                        : "meanwhile the host " + Deed(step);
}

std::string PhraseOfGoingOn(std::string_view call) {
    return CalledIn(call) + " goes on";
}
