#include "rehearsal/Rehearsal.h"

#include "framework/CmdMessage.h"
#include "framework/XmlText.h"
#include "rehearsal/AgentFace.h"

#include <stdexcept>
#include <utility>

namespace {

vq::auto_com<CmdMessage> MessageOf(const Step& step) {
    auto message = CmdMessage::Create(step.name);
    for (const auto& [name, value] : step.params)
        message->AddParam(name, "STRING", value);
    return message;
}

bool NeedsAgent(StepKind kind) {
    return kind != StepKind::Host && kind != StepKind::Create && kind != StepKind::Advance &&
           kind != StepKind::On && kind != StepKind::Throw;
}

} // namespace

Rehearsal::Rehearsal(DriverCreator create, TraceSink& sink, bool showLookUps)
    : m_create(std::move(create))
    , m_host(sink, showLookUps, [this](const Step& step) { DoInside(step); }) {}

Rehearsal::~Rehearsal() {
    m_host.Events().Mute();
}

void Rehearsal::Judge(const Step& step) const {
    if (step.kind == StepKind::Create && m_agent)
        throw std::invalid_argument("\"create\" finds an agent that lives; \"destroy\" it first");
    if (step.kind == StepKind::Destroy && !m_agent)
        throw std::invalid_argument("\"destroy\" finds no agent; \"create\" one first");
    if (step.kind == StepKind::Advance && !m_host.Time().CanAdvance(step.duration))
        throw std::invalid_argument("\"ms\" leads beyond the end of the clock; it must be at most " +
                                    std::to_string((VirtualTime::max() - m_host.Time().Now()).count()) +
                                    " by now");
}

void Rehearsal::Do(const Step& step) {
    m_thrown.clear();
    RequireAgent(step.kind);
    if (NeedsAgent(step.kind) && !m_agent)
        return;
    m_host.Events().Tell(&TraceSink::StepBegins, step);
    Perform(step);
}

void Rehearsal::DoInside(const Step& step) {
    // A driver that calls its host while it is created or destroyed cannot be entered.
    if (NeedsAgent(step.kind) && !m_agent)
        return;
    m_host.Events().Tell(&TraceSink::StepBegins, step);
    Perform(step);
}

void Rehearsal::Finish() {
    if (m_agent)
        Do(Step::Plain(StepKind::Destroy));
}

void Rehearsal::RequireAgent(StepKind kind) {
    if (m_agent || !NeedsAgent(kind))
        return;
    Do(Step::Plain(StepKind::Create));
    if (kind == StepKind::Initialize || kind == StepKind::Register)
        return;
    Do(Step::Plain(StepKind::Initialize));
    Do(Step::Plain(StepKind::Register));
}

void Rehearsal::Perform(const Step& step) {
    Trace& trace = m_host.Events();
    switch (step.kind) {
    case StepKind::Host:
        return step.host.ApplyTo(m_host.Settings());
    case StepKind::Create:
        return trace.Enter([&] { m_agent = m_create(m_host.Instances()); });
    case StepKind::Initialize:
        return Initialize(step);
    case StepKind::Register:
        return trace.Enter([&] { m_agent->RegisterCommands(); });
    case StepKind::Command:
        return trace.Enter([&] { m_agent->ExecuteCommand(*MessageOf(step), nullptr, 0); });
    case StepKind::Request:
        return Request(step);
    case StepKind::Advance:
        return m_host.Time().Advance(step.duration);
    case StepKind::StreamReady:
        return EnterFace(m_host.Registry(), trace, "AudioStreamCreated",
                         [](IAnnouncementAgent& face) { face.AudioStreamCreated(); });
    case StepKind::PlayDone:
        return EnterFace(m_host.Registry(), trace, "AudioAnnouncementComplete",
                         [](IAnnouncementAgent& face) { face.AudioAnnouncementComplete(); });
    case StepKind::RoomAsked:
        return AskRoom(step.roomId);
    case StepKind::Save:
        return Save();
    case StepKind::Destroy:
        return trace.Enter([&] { m_agent.reset(); });
    case StepKind::On:
        return m_host.FromInside().Set(step.reaction);
    case StepKind::Throw:
        Throw(step);
    }
}

void Rehearsal::Initialize(const Step& step) {
    const auto configuration = VqXML::CreateXmlNode("configuration", "");
    VqXML::INode* const savedState = step.savedState ? step.savedState->GetRootNode() : nullptr;
    m_host.Events().Enter([&] { m_agent->Initialize(0, *configuration, savedState); });
}

void Rehearsal::Request(const Step& step) {
    vq::auto_com<VqXML::INode> reply;
    m_host.Events().Enter([&] { reply = m_agent->UIRequest(*MessageOf(step)); });
    if (reply)
        m_host.Events().Tell(&TraceSink::Replied, ToXmlText(*reply));
}

void Rehearsal::AskRoom(std::uint32_t roomId) {
    Trace& trace = m_host.Events();
    EnterFace(m_host.Registry(), trace, "IsRoomInCurrentAnnouncement", [&](IAnnouncementAgent& face) {
        trace.Tell(&TraceSink::Answered, face.IsRoomInCurrentAnnouncement(roomId));
    });
}

void Rehearsal::Save() {
    vq::auto_com<VqXML::INode> state;
    m_host.Events().Enter([&] { state = m_agent->GetPersistState(0); });
    if (state)
        m_host.Events().Tell(&TraceSink::Saved, ToXmlText(*state));
}

void Rehearsal::Throw(const Step& step) {
    switch (step.thrownType) {
    case ThrownType::Characters:
        m_thrown.push_back(step.thrownText);
        throw m_thrown.back().c_str(); // NOLINT(misc-throw-by-value-catch-by-reference): what hosts throw
    case ThrownType::String:
        throw std::string(step.thrownText);
    case ThrownType::Other:
        break;
    }
    throw std::runtime_error(step.thrownText);
}
