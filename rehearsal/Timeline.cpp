#include "rehearsal/Timeline.h"

#include "rehearsal/JsonText.h"
#include "rehearsal/Phrases.h"
#include "rehearsal/Step.h"

namespace {

constexpr std::size_t kLongestXml = 300;

std::string Cut(const std::string& xml) {
    const std::string_view beginning = Beginning(xml, kLongestXml);
    std::string text = OneLine(beginning);
    if (beginning.size() < xml.size())
        text.append("… (").append(std::to_string(xml.size())).append(" bytes)");
    return text;
}

bool IsOfAgent(std::string_view operation) {
    constexpr std::string_view kDriver = "VqBaseDriver.";
    return operation.substr(0, kDriver.size()) == kDriver;
}

/// Commands say by their events whom they start; only this one is for the announcement that plays.
bool IsForPlaying(const Step& step) {
    switch (step.kind) {
    case StepKind::Command:
        return step.name == "ANNOUNCEMENT_DISMISSED";
    case StepKind::StreamReady:
    case StepKind::PlayDone:
    case StepKind::RoomAsked:
        return true;
    default:
        return false;
    }
}

} // namespace

void Timeline::StepBegins(VirtualTime now, const Step& step) {
    if (!m_inside.empty())
        return StepInside(now, step);
    m_subject = IsForPlaying(step) ? m_playing : std::nullopt;
    Line(now, "> ", PhraseOf(step));
    if (step.kind == StepKind::Destroy) {
        m_playing.reset();
        m_ownerOf.clear();
    }
}

void Timeline::StepInside(VirtualTime now, const Step& step) {
    const Inside& inside = m_inside.back();
    m_subject = inside.subject;
    AnnouncementLine(now, PhraseInside(inside.operation, step));
    m_subject = IsForPlaying(step) ? m_playing : std::nullopt;
    if (step.kind == StepKind::Throw)
        Leave();
}

void Timeline::Leave() {
    m_subject = m_inside.back().subject;
    m_inside.pop_back();
}

void Timeline::ReactionBegins(VirtualTime /*now*/, std::string_view operation) {
    m_inside.push_back({std::string(operation), m_subject});
}

void Timeline::GoesOn(VirtualTime now, std::string_view operation) {
    m_subject = m_inside.back().subject;
    AnnouncementLine(now, PhraseOfGoingOn(operation));
    Leave();
}

void Timeline::Called(VirtualTime now, const HostCall& call) {
    if (call.operation == "VqBaseDriver.FireEvent") {
        m_playing = static_cast<AnnouncementId>(std::get<std::int64_t>(call.arguments[0]));
        m_subject = m_playing;
    }
    NoteTimers(call);
    if (IsOfAgent(call.operation))
        AgentLine(now, PhraseOf(call));
    else
        AnnouncementLine(now, PhraseOf(call));
}

void Timeline::NoteTimers(const HostCall& call) {
    if (call.operation == "ITimerManager.AddTimer" && m_subject)
        m_ownerOf[std::get<std::uint32_t>(call.returned)] = *m_subject;
    else if (call.operation == "ITimerManager.KillTimer")
        m_ownerOf.erase(static_cast<std::uint32_t>(std::get<std::int64_t>(call.arguments[0])));
}

void Timeline::TimerFired(VirtualTime now, std::uint32_t timerId, TimerOwner owner) {
    m_subject.reset();
    const std::string id = std::to_string(timerId);
    if (owner == TimerOwner::Agent)
        return AgentLine(now, "poll timer " + id + " fires");
    const auto known = m_ownerOf.find(timerId);
    if (known != m_ownerOf.end()) {
        m_subject = known->second;
        m_ownerOf.erase(known);
    }
    AnnouncementLine(now, "timer " + id + " fires");
}

void Timeline::CalledBack(VirtualTime now, std::string_view operation) {
    m_subject = m_playing;
    AnnouncementLine(now, operation == "AudioStreamCreated" ? "audio: the stream is ready"
                                                            : "audio: the file has been played");
}

void Timeline::Replied(VirtualTime now, const std::string& xml) {
    AgentLine(now, "reply: " + Cut(xml));
}

void Timeline::Saved(VirtualTime now, const std::string& xml) {
    AgentLine(now, "state: " + Cut(xml));
}

void Timeline::Answered(VirtualTime now, bool answer) {
    AgentLine(now, answer ? "yes" : "no");
}

void Timeline::HandlerMissing(VirtualTime now, std::string_view name) {
    AgentLine(now, "nobody handles " + QuotedExcerpt(name));
}

void Timeline::Thrown(VirtualTime now, std::string_view type, std::string_view text) {
    std::string phrase = "the agent throws ";
    if (type == "other")
        phrase.append("something that has no text");
    else
        phrase.append(type).append(" ").append(QuotedExcerpt(text, kLongestXml));
    AgentLine(now, phrase);
}

void Timeline::AgentLine(VirtualTime now, std::string_view text) {
    Line(now, "  ", text);
}

void Timeline::AnnouncementLine(VirtualTime now, std::string_view text) {
    Line(now, m_subject ? "    " + std::to_string(*m_subject) + " | " : "  ", text);
}

void Timeline::Line(VirtualTime now, std::string_view indent, std::string_view text) {
    constexpr std::size_t kTimeWidth = 10;
    constexpr unsigned kMillisecondsASecond = 1000;
    const std::string milliseconds = std::to_string(now.count() % kMillisecondsASecond);
    const std::string seconds = std::to_string(now.count() / kMillisecondsASecond) + "." +
                                std::string(3 - milliseconds.size(), '0') + milliseconds;
    std::string& out = m_output.Text();
    out.append(seconds.size() < kTimeWidth ? kTimeWidth - seconds.size() : 0, ' ');
    out.append(seconds).append("  ");
    out.append(2 * m_inside.size(), ' ').append(indent).append(text);
    m_output.EndLine();
}
