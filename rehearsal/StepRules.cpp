#include "rehearsal/StepRules.h"

#include "host/VqXML.h"
#include "rehearsal/JsonText.h"
#include "rehearsal/Reaction.h"

#include <algorithm>
#include <stdexcept>

namespace {

using Value = StepLine::Value;
using Kind = Value::Kind;

struct NamedType {
    std::string_view name;
    ThrownType type;
};

constexpr NamedType kThrownTypes[] = {
    {"const char*", ThrownType::Characters},
    {"std::string", ThrownType::String},
    {"other", ThrownType::Other},
};

std::optional<VirtualTime> ToTime(const Value& value) {
    if (value.kind == Kind::Null)
        return std::nullopt;
    return VirtualTime(value.number);
}

std::optional<std::vector<std::uint32_t>> ToIds(const Value& value) {
    if (value.kind == Kind::Null)
        return std::nullopt;
    return value.ids;
}

std::uint32_t ToId(const Value& value) {
    return static_cast<std::uint32_t>(value.number);
}

void StoreState(Step& step, const Value& value) {
    if (value.kind == Kind::Null)
        return;
    step.state = value.text;
    step.savedState = VqXML::CreateXmlDocument(value.text);
    if (!step.savedState)
        throw std::invalid_argument(
            "\"state\" is not XML, as it must be: a whole element, such as <announcements/>");
}

void StoreName(Step& step, const Value& value) {
    step.name = value.text;
}

void StoreParams(Step& step, const Value& value) {
    step.params = value.texts;
}

Reaction& ReactionOf(Step& step) {
    if (!step.reaction)
        step.reaction = std::make_shared<Reaction>();
    return *step.reaction;
}

void StoreCall(Step& step, const Value& value) {
    const auto* const call = std::find(std::begin(kReactionCalls), std::end(kReactionCalls), value.text);
    if (call != std::end(kReactionCalls)) {
        ReactionOf(step).call = *call;
        return;
    }
    std::string list;
    for (const std::string_view known : kReactionCalls)
        list.append(list.empty() ? "" : ", ").append(QuotedExcerpt(known));
    throw std::invalid_argument("unknown \"call\" " + QuotedExcerpt(value.text) + "; it is one of " + list);
}

void StoreThrownType(Step& step, const Value& value) {
    const auto* const found = std::find_if(std::begin(kThrownTypes), std::end(kThrownTypes),
                                           [&](const NamedType& known) { return known.name == value.text; });
    if (found == std::end(kThrownTypes))
        throw std::invalid_argument("unknown \"type\" " + QuotedExcerpt(value.text) + "; it is one of " +
                                    ListOfNames(kThrownTypes));
    step.thrownType = found->type;
}

/// Of the requests a host can make from inside a call those that change nothing: the agent may be on its way
/// through what the others change.
void RequireHarmless(const Step& step) {
    if (step.kind == StepKind::Request && step.name != "get_announcements" && step.name != "get_announcement")
        throw std::invalid_argument("\"name\" is " + QuotedExcerpt(step.name) +
                                    "; from inside a call it must be \"get_announcements\" or "
                                    "\"get_announcement\"");
}

Step ReadReactionStep(const StepLine& line, bool isLast) {
    Step step = ReadStep(line, StepPlace::Reaction);
    RequireHarmless(step);
    if (step.kind == StepKind::Throw && !isLast)
        throw std::invalid_argument("\"throw\" must be the last step");
    return step;
}

void StoreSteps(Step& step, const Value& value) {
    auto& steps = ReactionOf(step).steps;
    steps.reserve(value.steps.size());
    for (const StepLine& line : value.steps) {
        try {
            steps.push_back(ReadReactionStep(line, &line == &value.steps.back()));
        } catch (const std::invalid_argument& error) {
            throw std::invalid_argument("in \"steps\", step " + std::to_string(steps.size() + 1) + ": " +
                                        error.what());
        }
    }
}

constexpr StepRule kRules[] = {
    {"host",
     StepKind::Host,
     StepPlace::Scenario,
     {{"device_id", MemberType::Id, false,
       [](Step& step, const Value& value) {
           step.host.deviceId = ToId(value);
       }},
      {"rooms", MemberType::IdsOrNull, false,
       [](Step& step, const Value& value) {
           step.host.rooms = ToIds(value);
       }},
      {"digital_audio", MemberType::Flag, false,
       [](Step& step, const Value& value) {
           step.host.hasDigitalAudio = value.flag;
       }},
      {"logger", MemberType::Flag, false,
       [](Step& step, const Value& value) {
           step.host.hasLogger = value.flag;
       }},
      {"device_manager", MemberType::Flag, false,
       [](Step& step, const Value& value) {
           step.host.hasDeviceManager = value.flag;
       }},
      {"timer_manager", MemberType::Flag, false,
       [](Step& step, const Value& value) {
           step.host.hasTimerManager = value.flag;
       }},
      {"stream_ready_ms", MemberType::MillisecondsOrNull, false,
       [](Step& step, const Value& value) {
           step.host.streamReadyAfter = ToTime(value);
       }},
      {"play_ms", MemberType::MillisecondsOrNull, false,
       [](Step& step, const Value& value) {
           step.host.playDoneAfter = ToTime(value);
       }}}},
    {"create", StepKind::Create, StepPlace::Scenario, {}},
    {"initialize",
     StepKind::Initialize,
     StepPlace::Scenario,
     {{"state", MemberType::TextOrNull, false, StoreState}}},
    {"register", StepKind::Register, StepPlace::Scenario, {}},
    {"command",
     StepKind::Command,
     StepPlace::Anywhere,
     {{"name", MemberType::Text, true, StoreName}, {"params", MemberType::Texts, false, StoreParams}}},
    {"request",
     StepKind::Request,
     StepPlace::Anywhere,
     {{"name", MemberType::Text, true, StoreName}, {"params", MemberType::Texts, false, StoreParams}}},
    {"advance",
     StepKind::Advance,
     StepPlace::Scenario,
     {{"ms", MemberType::Milliseconds, true,
       [](Step& step, const Value& value) {
           step.duration = VirtualTime(value.number);
       }}}},
    {"stream_ready", StepKind::StreamReady, StepPlace::Anywhere, {}},
    {"play_done", StepKind::PlayDone, StepPlace::Anywhere, {}},
    {"room_asked",
     StepKind::RoomAsked,
     StepPlace::Anywhere,
     {{"id", MemberType::Id, true,
       [](Step& step, const Value& value) {
           step.roomId = ToId(value);
       }}}},
    {"save", StepKind::Save, StepPlace::Anywhere, {}},
    {"destroy", StepKind::Destroy, StepPlace::Scenario, {}},
    {"on",
     StepKind::On,
     StepPlace::Scenario,
     {{"call", MemberType::Text, true, StoreCall},
      {"nth", MemberType::Nth, false,
       [](Step& step, const Value& value) {
           ReactionOf(step).nth = static_cast<std::uint32_t>(value.number);
       }},
      {"steps", MemberType::Steps, true, StoreSteps}}},
    {"throw",
     StepKind::Throw,
     StepPlace::Reaction,
     {{"type", MemberType::Text, true, StoreThrownType},
      {"text", MemberType::Text, false,
       [](Step& step, const Value& value) {
           step.thrownText = value.text;
       }}}},
};

} // namespace

const MemberRule* StepRule::end() const {
    return std::find_if(members, members + kMostMembers,
                        [](const auto& member) { return member.name.empty(); });
}

const StepRule* FindRule(std::string_view name, StepPlace place) {
    const auto* const found = std::find_if(std::begin(kRules), std::end(kRules), [&](const StepRule& rule) {
        return rule.name == name && rule.MayStand(place);
    });
    return found != std::end(kRules) ? found : nullptr;
}

const StepRule& RuleOf(StepKind kind) {
    return *std::find_if(std::begin(kRules), std::end(kRules),
                         [&](const StepRule& rule) { return rule.kind == kind; });
}

std::string ListOfSteps(StepPlace place) {
    std::vector<StepRule> rules;
    std::copy_if(std::begin(kRules), std::end(kRules), std::back_inserter(rules),
                 [&](const StepRule& rule) { return rule.MayStand(place); });
    return ListOfNames(rules);
}
