#include "rehearsal/Step.h"

#include "host/VqXML.h"
#include "rehearsal/JsonText.h"
#include "rehearsal/StepLine.h"

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <string_view>

namespace {

using Value = StepLine::Value;
using Kind = Value::Kind;

/// What a member may be.
enum class Type { Flag, Id, IdsOrNull, Milliseconds, MillisecondsOrNull, Text, TextOrNull, Texts };

struct MemberRule {
    std::string_view name;
    Type type;
    bool isRequired;
    void (*store)(Step& step, const Value& value);
};

constexpr std::size_t kMostRules = 8;

struct StepRule {
    std::string_view name;
    StepKind kind;
    MemberRule members[kMostRules];

    [[nodiscard]] const MemberRule* begin() const { return members; }
    [[nodiscard]] const MemberRule* end() const {
        return std::find_if(members, members + kMostRules,
                            [](const auto& member) { return member.name.empty(); });
    }
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

constexpr StepRule kRules[] = {
    {"host",
     StepKind::Host,
     {{"device_id", Type::Id, false,
       [](Step& step, const Value& value) {
           step.host.deviceId = ToId(value);
       }},
      {"rooms", Type::IdsOrNull, false,
       [](Step& step, const Value& value) {
           step.host.rooms = ToIds(value);
       }},
      {"digital_audio", Type::Flag, false,
       [](Step& step, const Value& value) {
           step.host.hasDigitalAudio = value.flag;
       }},
      {"logger", Type::Flag, false,
       [](Step& step, const Value& value) {
           step.host.hasLogger = value.flag;
       }},
      {"device_manager", Type::Flag, false,
       [](Step& step, const Value& value) {
           step.host.hasDeviceManager = value.flag;
       }},
      {"timer_manager", Type::Flag, false,
       [](Step& step, const Value& value) {
           step.host.hasTimerManager = value.flag;
       }},
      {"stream_ready_ms", Type::MillisecondsOrNull, false,
       [](Step& step, const Value& value) {
           step.host.streamReadyAfter = ToTime(value);
       }},
      {"play_ms", Type::MillisecondsOrNull, false,
       [](Step& step, const Value& value) {
           step.host.playDoneAfter = ToTime(value);
       }}}},
    {"create", StepKind::Create, {}},
    {"initialize", StepKind::Initialize, {{"state", Type::TextOrNull, false, StoreState}}},
    {"register", StepKind::Register, {}},
    {"command",
     StepKind::Command,
     {{"name", Type::Text, true, StoreName}, {"params", Type::Texts, false, StoreParams}}},
    {"request",
     StepKind::Request,
     {{"name", Type::Text, true, StoreName}, {"params", Type::Texts, false, StoreParams}}},
    {"advance",
     StepKind::Advance,
     {{"ms", Type::Milliseconds, true,
       [](Step& step, const Value& value) {
           step.duration = VirtualTime(value.number);
       }}}},
    {"stream_ready", StepKind::StreamReady, {}},
    {"play_done", StepKind::PlayDone, {}},
    {"room_asked",
     StepKind::RoomAsked,
     {{"id", Type::Id, true,
       [](Step& step, const Value& value) {
           step.roomId = ToId(value);
       }}}},
    {"save", StepKind::Save, {}},
    {"destroy", StepKind::Destroy, {}},
};

std::string Quoted(std::string_view name) {
    return QuotedExcerpt(name);
}

template <class Names>
std::string Listed(const Names& names) {
    std::string list;
    for (const auto& item : names)
        list.append(list.empty() ? "" : ", ").append(Quoted(item.name));
    return list;
}

std::string_view NameOf(Type type) {
    switch (type) {
    case Type::Flag:
        return "true or false";
    case Type::Id:
        return "a whole number from 0 to 4294967295";
    case Type::IdsOrNull:
        return "null or a list of whole numbers from 0 to 4294967295";
    case Type::Milliseconds:
        return "a whole number of milliseconds from 0 to 18446744073709551615";
    case Type::MillisecondsOrNull:
        return "null or a whole number of milliseconds from 0 to 18446744073709551615";
    case Type::Text:
        return "a text";
    case Type::TextOrNull:
        return "null or a text";
    case Type::Texts:
        return "an object whose members are texts";
    }
    return {};
}

/// Whether the kind is the type's; what is inside lists and objects is judged by their `fault`.
bool Fits(const Value& value, Type type) {
    switch (type) {
    case Type::Flag:
        return value.kind == Kind::Flag;
    case Type::Id:
        return value.kind == Kind::Integer && value.number <= std::numeric_limits<std::uint32_t>::max();
    case Type::IdsOrNull:
        return value.kind == Kind::List || value.kind == Kind::Null;
    case Type::Milliseconds:
        return value.kind == Kind::Integer;
    case Type::MillisecondsOrNull:
        return value.kind == Kind::Integer || value.kind == Kind::Null;
    case Type::Text:
        return value.kind == Kind::Text;
    case Type::TextOrNull:
        return value.kind == Kind::Text || value.kind == Kind::Null;
    case Type::Texts:
        return value.kind == Kind::Object;
    }
    return false;
}

void RequireFit(const MemberRule& rule, const Value& value) {
    const std::string mustBe = "; it must be " + std::string(NameOf(rule.type));
    if (!Fits(value, rule.type)) {
        const Kind kind = value.kind == Kind::Integer && rule.type == Type::Id ? Kind::TooLarge : value.kind;
        throw std::invalid_argument(Quoted(rule.name) + " is " + std::string(StepLine::NameOf(kind)) +
                                    mustBe);
    }
    if (!value.fault.empty())
        throw std::invalid_argument("in " + Quoted(rule.name) + ", " + value.fault + mustBe);
}

const StepRule& RuleOf(const StepLine& line) {
    const Value* const does = line.Find("do");
    if (does == nullptr)
        throw std::invalid_argument("\"do\" is missing; it is one of " + Listed(kRules));
    if (does->kind != Kind::Text)
        throw std::invalid_argument("\"do\" is " + std::string(StepLine::NameOf(does->kind)) +
                                    "; it is one of " + Listed(kRules));
    const auto* const rule = std::find_if(std::begin(kRules), std::end(kRules),
                                          [&](const StepRule& known) { return known.name == does->text; });
    if (rule == std::end(kRules))
        throw std::invalid_argument("unknown \"do\" " + Quoted(does->text) + "; it is one of " +
                                    Listed(kRules));
    return *rule;
}

void RequireKnown(const StepLine& line, const StepRule& rule) {
    for (const auto& [name, value] : line.members) {
        const auto isIt = [&, &known = name](const MemberRule& member) {
            return member.name == known;
        };
        if (name == "do" || std::any_of(rule.begin(), rule.end(), isIt))
            continue;
        const bool takesNone = rule.begin() == rule.end();
        throw std::invalid_argument("unknown member " + Quoted(name) + "; " + Quoted(rule.name) + " takes " +
                                    (takesNone ? "none" : Listed(rule)));
    }
}

} // namespace

Step Step::Read(const std::string& line) {
    const StepLine members = StepLine::Read(line);
    const StepRule& rule = RuleOf(members);
    RequireKnown(members, rule);
    Step step;
    step.kind = rule.kind;
    for (const MemberRule& member : rule) {
        const Value* const value = members.Find(member.name);
        if (value == nullptr && member.isRequired)
            throw std::invalid_argument(Quoted(member.name) + " is missing; it must be " +
                                        std::string(NameOf(member.type)));
        if (value == nullptr)
            continue;
        RequireFit(member, *value);
        member.store(step, *value);
    }
    step.echo = members.ToText();
    return step;
}

Step Step::Plain(StepKind kind) {
    const auto* const rule = std::find_if(std::begin(kRules), std::end(kRules),
                                          [&](const StepRule& known) { return known.kind == kind; });
    Step step;
    step.kind = kind;
    step.echo = "{\"do\":\"" + std::string(rule->name) + "\"}";
    return step;
}
