#include "rehearsal/JsonText.h"
#include "rehearsal/Phrases.h"
#include "rehearsal/Reaction.h"

namespace {

std::string ListOf(const std::vector<std::uint32_t>& ids) {
    std::string list;
    for (const std::uint32_t id : ids)
        list.append(list.empty() ? "" : ", ").append(std::to_string(id));
    return list.empty() ? "none" : list;
}

void AddSwitch(std::string& phrase, std::string_view service, const std::optional<bool>& isOn) {
    if (isOn)
        phrase.append("; ").append(service).append(*isOn ? " can be found" : " cannot be found");
}

void AddAnswer(std::string& phrase,
               std::string_view what,
               const std::optional<std::optional<VirtualTime>>& after) {
    if (after)
        phrase.append("; ").append(what).append(*after ? " after " + InSeconds(**after)
                                                       : " when a step says so");
}

std::string PhraseOfHost(const HostChange& change) {
    std::string phrase;
    if (change.deviceId)
        phrase.append("; the agent's device is ").append(std::to_string(*change.deviceId));
    if (change.rooms)
        phrase.append("; rooms: ").append(*change.rooms ? ListOf(**change.rooms) : "every id");
    AddSwitch(phrase, "digital audio", change.hasDigitalAudio);
    AddSwitch(phrase, "logger", change.hasLogger);
    AddSwitch(phrase, "device manager", change.hasDeviceManager);
    AddSwitch(phrase, "timer manager", change.hasTimerManager);
    AddAnswer(phrase, "stream ready", change.streamReadyAfter);
    AddAnswer(phrase, "file played", change.playDoneAfter);
    return phrase.empty() ? "host stays as it is" : "host:" + phrase.substr(1);
}

std::string PhraseOfMessage(std::string_view kind, const Step& step) {
    std::string phrase = std::string(kind) + " " + OneLine(step.name);
    for (const auto& [name, value] : step.params)
        phrase.append(", ").append(OneLine(name)).append(" ").append(QuotedExcerpt(value));
    return phrase;
}

} // namespace

std::string PhraseOf(const Step& step) {
    switch (step.kind) {
    case StepKind::Host:
        return PhraseOfHost(step.host);
    case StepKind::Create:
        return "create the agent";
    case StepKind::Initialize:
        return step.state ? "initialize with saved state " + QuotedExcerpt(*step.state)
                          : "initialize without saved state";
    case StepKind::Register:
        return "register the commands";
    case StepKind::Command:
        return PhraseOfMessage("command", step);
    case StepKind::Request:
        return PhraseOfMessage("request", step);
    case StepKind::Advance:
        return InSeconds(step.duration) + " pass";
    case StepKind::StreamReady:
        return "the stream is ready";
    case StepKind::PlayDone:
        return "the file has been played";
    case StepKind::RoomAsked:
        return "does room " + std::to_string(step.roomId) + " belong to what is playing?";
    case StepKind::Save:
        return "save";
    case StepKind::Destroy:
        return "destroy the agent";
    case StepKind::On:
        return PhraseOf(*step.reaction);
    case StepKind::Throw:
        return "throw " + QuotedExcerpt(step.thrownText);
    }
    return {};
}

std::string InSeconds(VirtualTime time) {
    constexpr unsigned kMillisecondsASecond = 1000;
    std::string text = std::to_string(time.count() / kMillisecondsASecond);
    if (const auto rest = time.count() % kMillisecondsASecond; rest != 0) {
        const std::string digits = std::to_string(kMillisecondsASecond + rest).substr(1);
        text.append(".").append(digits, 0, digits.find_last_not_of('0') + 1);
    }
    return text + " s";
}

std::string OneLine(std::string_view text) {
    constexpr char kFirstVisible = ' ';
    std::string line;
    for (const char character : text) {
        if (static_cast<unsigned char>(character) >= kFirstVisible) {
            line.push_back(character);
            continue;
        }
        std::string quoted;
        AppendJsonText(quoted, {&character, 1});
        line.append(quoted, 1, quoted.size() - 2);
    }
    return line;
}
