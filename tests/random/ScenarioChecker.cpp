#include "tests/random/ScenarioChecker.h"

#include "rehearsal/Reaction.h"

#include <algorithm>

namespace {

std::int64_t Number(const HostCall& call, std::size_t index) {
    return std::get<std::int64_t>(call.arguments[index]);
}

std::string Text(const HostCall& call, std::size_t index) {
    return std::string(std::get<std::string_view>(call.arguments[index]));
}

bool StartsWith(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

} // namespace

ScenarioChecker::ScenarioChecker(Flavour flavour, std::set<std::uint32_t> stored)
    : m_flavour(flavour)
    , m_stored(std::move(stored)) {}

void ScenarioChecker::Check(bool isRight, const std::string& what) {
    if (!isRight)
        m_faults.push_back(what + ", in " + m_step.echo);
}

void ScenarioChecker::StepBegins(VirtualTime /*now*/, const Step& step) {
    EndOfStep();
    m_step = step;
    m_hasStarted = false;
    m_isRegistered = m_isRegistered || step.kind == StepKind::Register;
    if (step.kind == StepKind::On)
        m_reactions.push_back({std::string(step.reaction->call), step.reaction->nth});
    if (step.kind == StepKind::Throw)
        LeaveReaction();
}

void ScenarioChecker::CountForReactions(std::string_view operation) {
    for (Reacting& one : m_reactions)
        one.left -= one.call == operation ? 1U : 0U;
    m_reactions.erase(std::remove_if(m_reactions.begin(), m_reactions.end(),
                                     [](const Reacting& one) { return one.left == 0; }),
                      m_reactions.end());
}

void ScenarioChecker::ReactionBegins(VirtualTime /*now*/, std::string_view /*operation*/) {
    m_outside.push_back({m_step, m_lastCall});
}

void ScenarioChecker::GoesOn(VirtualTime /*now*/, std::string_view operation) {
    Check(!m_outside.empty() && m_outside.back().lastCall == operation,
          "what did not react goes on: " + std::string(operation));
    LeaveReaction();
}

void ScenarioChecker::LeaveReaction() {
    m_step = m_outside.back().step;
    m_lastCall = m_outside.back().lastCall;
    m_outside.pop_back();
}

void ScenarioChecker::EndOfStep() {
    if (m_step.kind != StepKind::Command || m_step.name != "execute_announcement" || m_hasStarted)
        return;
    const std::string text = Parameter("id");
    if (m_flavour != Flavour::Calm || text == "0")
        return;
    const auto id = static_cast<std::uint32_t>(std::stoul(text));
    const bool isStored = m_stored.count(id) > 0;
    if (isStored && id == m_lastStarted)
        return; // it did not start, so something plays, and that is always what was started last
    if (std::none_of(m_waiting.begin(), m_waiting.end(), [id](const Waiting& one) { return one.id == id; }))
        m_waiting.push_back({id, !isStored});
}

void ScenarioChecker::Called(VirtualTime /*now*/, const HostCall& call) {
    const std::string_view operation = call.operation;
    if (m_isQuiet)
        Check(operation == "VqBaseDriver.AddTimer", "after all was over came " + std::string(operation));
    if (operation == "VqBaseDriver.FireEvent")
        Started(static_cast<std::uint32_t>(Number(call, 0)));
    CheckTimerCall(call);
    if (StartsWith(operation, "IRoomProxy."))
        CheckRoomCall(operation.substr(std::string_view("IRoomProxy.").size()), call);
    CheckForms(call);
    CountForReactions(operation);
    m_lastCall = operation;
}

void ScenarioChecker::CheckTimerCall(const HostCall& call) {
    if (call.operation == "ITimerManager.KillTimer") {
        const auto id = static_cast<std::uint32_t>(Number(call, 0));
        const auto found = m_everArmed.find(id);
        Check(id == 0 || (found != m_everArmed.end() && found->second == TimerOwner::Announcement),
              "timer " + std::to_string(id) + " was cancelled, which is nobody's to cancel");
        m_armed.erase(id);
        return;
    }
    const bool isAgents = call.operation == "VqBaseDriver.AddTimer";
    if (!isAgents && call.operation != "ITimerManager.AddTimer")
        return;
    if (isAgents)
        Check(Number(call, 0) == 1000 && Number(call, 1) == 1, "a poll of another period");
    const std::uint32_t id = std::get<std::uint32_t>(call.returned);
    Check(id > m_lastTimer, "a timer id came again");
    m_lastTimer = id;
    const TimerOwner owner = isAgents ? TimerOwner::Agent : TimerOwner::Announcement;
    m_armed[id] = owner;
    m_everArmed[id] = owner;
}

void ScenarioChecker::CheckRoomCall(std::string_view operation, const HostCall& call) {
    const std::string room = std::to_string(Number(call, 0));
    if (operation == "SetUpAudio" || operation == "SetUpVideo")
        m_setUp.insert(std::string(operation.substr(5)) + " " + room);
    else if (operation == "RestoreAudioState")
        m_setUp.erase("Audio " + room);
    else if (operation == "RestoreVideoState")
        m_setUp.erase("Video " + room);
    else if (operation == "SetAudioVolume")
        Check(Number(call, 1) != 0 && Number(call, 1) != 4294967295, "a volume was set that means none");
    else
        Check(false, "nobody calls " + std::string(operation));
}

void ScenarioChecker::CheckForms(const HostCall& call) {
    if (call.operation == "VqBaseDriver.LogMessage")
        Check(Number(call, 0) == 3, "a log line of the agent at another level");
    if (call.operation == "ILogger.Log")
        Check(Number(call, 0) == 3 || Number(call, 0) == 6, "a log line at another level");
    if (call.operation == "IDigitalAudio.PlayFile")
        Check(StartsWith(Text(call, 0), "/media/announcements/") &&
                  Text(call, 0).rfind(".wav") == Text(call, 0).size() - 4,
              "a file was played from " + Text(call, 0));
    if (call.operation == "IDeviceManager.SendCommandToDevice")
        Check(Number(call, 2) == 0 && Number(call, 3) == 0, "a command went out with other last arguments");
}

void ScenarioChecker::Started(std::uint32_t id) {
    Check(m_lastCall == "VqBaseDriver.AddTimer", "an event was fired before its poll was armed");
    m_hasStarted = true;
    if (m_flavour != Flavour::Calm)
        return;
    if (m_step.kind != StepKind::Command) {
        StartedFromQueue(id);
    } else if (Parameter("id") == "0") {
        Check(id == m_lastStarted, "id 0 started " + std::to_string(id));
    } else {
        Check(std::to_string(id) == Parameter("id"), "the request started " + std::to_string(id));
        // Nothing was playing, and then nothing waits that could be played.
        for (const Waiting& one : m_waiting)
            Check(one.isLoose, std::to_string(one.id) + " was left waiting");
        m_waiting.erase(std::remove_if(m_waiting.begin(), m_waiting.end(),
                                       [id](const Waiting& one) { return one.id == id; }),
                        m_waiting.end());
    }
    m_lastStarted = id;
}

void ScenarioChecker::StartedFromQueue(std::uint32_t id) {
    Check(m_stored.count(id) > 0, std::to_string(id) + " was played, but is not stored");
    const auto own =
        std::find_if(m_waiting.begin(), m_waiting.end(), [id](const Waiting& one) { return one.id == id; });
    if (own == m_waiting.end()) {
        Check(false, std::to_string(id) + " was played more often than it was queued");
        return;
    }
    if (!own->isLoose) {
        for (auto before = m_waiting.begin(); before != own; ++before)
            Check(before->isLoose, std::to_string(id) + " was played before " + std::to_string(before->id));
    }
    m_waiting.erase(own);
}

void ScenarioChecker::TimerFired(VirtualTime /*now*/, std::uint32_t timerId, TimerOwner owner) {
    const auto found = m_armed.find(timerId);
    if (found == m_armed.end()) {
        Check(false, "timer " + std::to_string(timerId) + " fired, which was not armed");
        return;
    }
    Check(found->second == owner, "timer " + std::to_string(timerId) + " fired for another");
    Check(!m_isQuiet || owner == TimerOwner::Agent, "a timer of an announcement fired after all was over");
    m_armed.erase(found);
}

void ScenarioChecker::CalledBack(VirtualTime /*now*/, std::string_view operation) {
    Check(!m_isQuiet, "after all was over the host answered " + std::string(operation));
}

void ScenarioChecker::Replied(VirtualTime /*now*/, const std::string& xml) {
    if (m_step.name == "get_announcement" || m_step.name == "get_announcements") {
        Check(StartsWith(xml, "<announcement"), "the reply was " + xml);
        return;
    }
    Check(StartsWith(xml, "<success") || StartsWith(xml, "<fail>"), "the reply was " + xml);
    if (m_step.name == "add_announcement" && StartsWith(xml, "<success"))
        m_added = static_cast<std::uint32_t>(std::stoul(xml.substr(std::string("<success>").size())));
    if (m_flavour != Flavour::Calm || !StartsWith(xml, "<success"))
        return;
    if (m_step.name == "add_announcement") {
        Check(m_stored.insert(m_added).second, "id " + std::to_string(m_added) + " was given out twice");
    } else if (m_step.name == "remove_announcement") {
        const auto id = static_cast<std::uint32_t>(std::stoul(Parameter("id")));
        Check(m_stored.erase(id) == 1, "id " + std::to_string(id) + " was removed twice");
        for (Waiting& one : m_waiting)
            one.isLoose = one.isLoose || one.id == id;
    }
}

void ScenarioChecker::Saved(VirtualTime /*now*/, const std::string& xml) {
    m_saved = xml;
}

void ScenarioChecker::HandlerMissing(VirtualTime /*now*/, std::string_view name) {
    Check(!m_isRegistered, "nobody took " + std::string(name));
}

void ScenarioChecker::Thrown(VirtualTime /*now*/, std::string_view type, std::string_view text) {
    if (m_flavour == Flavour::Meddling && (text == "no" || type == "other"))
        return;
    Check(m_flavour != Flavour::Calm && type == "const char*" && StartsWith(text, "Unable to"),
          "thrown: " + std::string(text));
}

void ScenarioChecker::ExpectDrained() {
    if (m_flavour != Flavour::Calm)
        return;
    for (const std::string& one : m_setUp)
        Check(false, "never restored: " + one);
    for (const Waiting& one : m_waiting)
        Check(one.isLoose, "never played: " + std::to_string(one.id));
}

std::string ScenarioChecker::Parameter(const std::string& name) const {
    for (const auto& [parameter, value] : m_step.params) {
        if (parameter == name)
            return value;
    }
    return {};
}
