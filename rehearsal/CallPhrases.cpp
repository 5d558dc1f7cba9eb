#include "framework/CmdMessage.h"
#include "host/Conversion.h"
#include "host/IAnnouncementAgent.h"
#include "host/IDeviceManager.h"
#include "host/IDigitalAudio.h"
#include "host/ILogger.h"
#include "host/IRoomProxy.h"
#include "host/ITimerManager.h"
#include "host/LogLevel.h"
#include "rehearsal/JsonText.h"
#include "rehearsal/Phrases.h"

#include <algorithm>
#include <iterator>

namespace {

std::int64_t Number(const HostCall& call, std::size_t index) {
    return std::get<std::int64_t>(call.arguments[index]);
}

std::string Digits(const HostCall& call, std::size_t index) {
    return std::to_string(Number(call, index));
}

std::string_view Text(const HostCall& call, std::size_t index) {
    return std::get<std::string_view>(call.arguments[index]);
}

/// What is published under the GUID, as people call it.
std::string ServiceOf(std::string_view guid) {
    constexpr std::pair<std::string_view, const char*> kNames[] = {
        {IAnnouncementAgent::kGuid, "the face for audio callbacks"},
        {IDeviceManager::kGuid, "the device manager"},
        {IDigitalAudio::kGuid, "digital audio"},
        {ILogger::kGuid, "the logger"},
        {IRoomProxy::kGuid, "room"},
        {ITimerManager::kGuid, "the timer manager"},
    };
    const auto* const found = std::find_if(std::begin(kNames), std::end(kNames),
                                           [&](const auto& name) { return name.first == guid; });
    return found != std::end(kNames) ? found->second : OneLine(guid);
}

std::string Outcome(const HostCall& call) {
    return std::get<bool>(call.returned) ? ": found" : ": not found";
}

std::string TimerRuns(std::string_view kind, const HostCall& call) {
    const auto interval = static_cast<std::uint64_t>(Number(call, 0));
    const bool isSeconds = Number(call, 1) == TimerUnit::Seconds;
    const VirtualTime time =
        isSeconds ? VirtualTime(std::chrono::duration<std::uint64_t>(interval)) : VirtualTime(interval);
    return std::string(kind) + " " + std::to_string(std::get<std::uint32_t>(call.returned)) + " runs for " +
           InSeconds(time);
}

std::string LogLine(std::string_view log, const HostCall& call) {
    std::string phrase(log);
    if (Number(call, 0) == LogLevel::Error)
        phrase.append(", error");
    else if (Number(call, 0) != LogLevel::Information)
        phrase.append(", level ").append(Digits(call, 0));
    return phrase.append(": ").append(QuotedExcerpt(Text(call, 1), kLongestText));
}

std::string PhraseOfParameter(const CmdMessage::Parameter& parameter) {
    if (parameter.isVariable)
        return "variable " + std::to_string(parameter.variableId) + " of device " +
               std::to_string(parameter.deviceId);
    return QuotedExcerpt(parameter.value, kLongestText);
}

/// "popup "Dinner is ready", image "d.png", for 5 s, with OK button".
std::string PhraseOfPopup(const CmdMessage& message) {
    std::string phrase = "popup";
    for (const auto& parameter : message.GetParameters()) {
        if (parameter.name == "MESSAGE")
            phrase.append(" ").append(PhraseOfParameter(parameter));
        else if (parameter.name == "IMGURL" && !parameter.value.empty())
            phrase.append(", image ").append(PhraseOfParameter(parameter));
        else if (parameter.name == "DELAY")
            phrase.append(", for ").append(InSeconds(VirtualTime(vq::ToULong(parameter.value))));
        else if (parameter.name == "SHOWOK")
            phrase.append(parameter.value == "true" ? ", with OK button" : ", without OK button");
    }
    return phrase;
}

std::string PhraseOfMessage(const HostCall& call) {
    const auto* const message = std::get<const CmdMessage*>(call.arguments[1]);
    if (message == nullptr)
        return "device " + Digits(call, 0) + ": a message of an unknown kind";
    if (message->GetName() == "SHOW_POPUP")
        return "navigator " + Digits(call, 0) + ": " + PhraseOfPopup(*message);
    if (message->GetName() == "HIDE_POPUP")
        return "navigator " + Digits(call, 0) + ": popup hidden";
    std::string phrase = "device " + Digits(call, 0) + ": command " + OneLine(message->GetName());
    for (const auto& parameter : message->GetParameters())
        phrase.append(", ").append(OneLine(parameter.name)).append(" ").append(PhraseOfParameter(parameter));
    return phrase;
}

std::string PhraseOfKill(const HostCall& call) {
    return Number(call, 0) == 0 ? "no timer to cancel" : "timer " + Digits(call, 0) + " is cancelled";
}

template <class Words>
std::string Room(const HostCall& call, const Words& words) {
    return "room " + Digits(call, 0) + ": " + words;
}

struct Phrase {
    std::string_view operation;
    std::string (*words)(const HostCall& call);
};

constexpr Phrase kPhrases[] = {
    {"IInstanceManager.RegisterInterface",
     [](const HostCall& call) {
         return "publishes " + ServiceOf(Text(call, 0));
     }},
    {"IInstanceManager.UnregisterInterface",
     [](const HostCall& call) {
         return "withdraws " + ServiceOf(Text(call, 0));
     }},
    {"IInstanceManager.QueryInterface",
     [](const HostCall& call) {
         return "looks up " + ServiceOf(Text(call, 0)) + Outcome(call);
     }},
    {"CmdDispatcher.RegisterCmd0",
     [](const HostCall& call) {
         return "takes command " + OneLine(Text(call, 0)) + ", without parameters";
     }},
    {"CmdDispatcher.RegisterCmd1",
     [](const HostCall& call) {
         return "takes command " + OneLine(Text(call, 0));
     }},
    {"UICmdDispatcher.RegisterUICmd",
     [](const HostCall& call) {
         return "answers request " + OneLine(Text(call, 0));
     }},
    {"VqBaseDriver.AddTimer",
     [](const HostCall& call) {
         return TimerRuns("poll timer", call);
     }},
    {"VqBaseDriver.FireEvent",
     [](const HostCall& call) {
         return "announcement " + Digits(call, 0) + " starts";
     }},
    {"VqBaseDriver.LogMessage",
     [](const HostCall& call) {
         return LogLine("driver log", call);
     }},
    {"VqBaseDriver.DmInvalidateState",
     [](const HostCall&) {
         return std::string("the state has changed");
     }},
    {"ITimerManager.AddTimer",
     [](const HostCall& call) {
         return TimerRuns("timer", call);
     }},
    {"ITimerManager.KillTimer", PhraseOfKill},
    {"ITimerManager.KillAllTimers",
     [](const HostCall&) {
         return std::string("an announcement goes, and its timers");
     }},
    {"IDeviceManager.SendCommandToDevice", PhraseOfMessage},
    {"IDeviceManager.InvalidateDeviceState",
     [](const HostCall& call) {
         return "the state of device " + Digits(call, 0) + " has changed";
     }},
    {"IDeviceManager.GetDeviceInterface",
     [](const HostCall& call) {
         return "looks up " + ServiceOf(Text(call, 1)) + " " + Digits(call, 0) + Outcome(call);
     }},
    {"IRoomProxy.SetUpAudio",
     [](const HostCall& call) {
         return Room(call, "audio set up");
     }},
    {"IRoomProxy.SetAudioVolume",
     [](const HostCall& call) {
         return Room(call, "volume " + Digits(call, 1));
     }},
    {"IRoomProxy.RestoreAudioState",
     [](const HostCall& call) {
         return Room(call, "audio restored");
     }},
    {"IRoomProxy.SetUpVideo",
     [](const HostCall& call) {
         return Room(call, "video set up");
     }},
    {"IRoomProxy.RestoreVideoState",
     [](const HostCall& call) {
         return Room(call, "video restored");
     }},
    {"IRoomProxy.CancelRestoringState",
     [](const HostCall& call) {
         return Room(call, "restoring cancelled");
     }},
    {"IDigitalAudio.CreateStream",
     [](const HostCall&) {
         return std::string("audio: a stream is asked for");
     }},
    {"IDigitalAudio.ReleaseStream",
     [](const HostCall&) {
         return std::string("audio: the stream is released");
     }},
    {"IDigitalAudio.PlayFile",
     [](const HostCall& call) {
         return "audio: plays " + QuotedExcerpt(Text(call, 0), kLongestText);
     }},
    {"ILogger.Log",
     [](const HostCall& call) {
         return LogLine("log", call);
     }},
    {"vq.AssertWrite",
     [](const HostCall& call) {
         return "failed check in " + OneLine(Text(call, 0)) + ", line " + Digits(call, 1);
     }},
};

} // namespace

std::string PhraseOf(const HostCall& call) {
    const auto* const found =
        std::find_if(std::begin(kPhrases), std::end(kPhrases),
                     [&](const Phrase& phrase) { return phrase.operation == call.operation; });
    return found != std::end(kPhrases) ? found->words(call) : std::string(call.operation);
}
