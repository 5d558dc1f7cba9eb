#include "rehearsal/Step.h"

#include "rehearsal/JsonText.h"
#include "rehearsal/StepLine.h"
#include "rehearsal/StepRules.h"

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <string_view>

namespace {

using Value = StepLine::Value;
using Kind = Value::Kind;

constexpr auto kMostId = std::numeric_limits<std::uint32_t>::max();

/// What a member of the type must be, in words, and whether a value's kind is such; what is inside lists and
/// objects is judged by their faults.
struct TypeRule {
    MemberType type;
    std::string_view words;
    bool (*fits)(const Value& value);
};

bool IsNull(const Value& value) {
    return value.kind == Kind::Null;
}

bool IsInteger(const Value& value) {
    return value.kind == Kind::Integer;
}

bool IsText(const Value& value) {
    return value.kind == Kind::Text;
}

constexpr TypeRule kTypes[] = {
    {MemberType::Flag, "true or false",
     [](const Value& value) {
         return value.kind == Kind::Flag;
     }},
    {MemberType::Id, "a whole number from 0 to 4294967295",
     [](const Value& value) {
         return IsInteger(value) && value.number <= kMostId;
     }},
    {MemberType::IdsOrNull, "null or a list of whole numbers from 0 to 4294967295",
     [](const Value& value) {
         return value.kind == Kind::List || IsNull(value);
     }},
    {MemberType::Milliseconds, "a whole number of milliseconds from 0 to 18446744073709551615", IsInteger},
    {MemberType::MillisecondsOrNull, "null or a whole number of milliseconds from 0 to 18446744073709551615",
     [](const Value& value) {
         return IsInteger(value) || IsNull(value);
     }},
    {MemberType::Nth, "a whole number from 1 to 4294967295",
     [](const Value& value) {
         return IsInteger(value) && value.number >= 1 && value.number <= kMostId;
     }},
    {MemberType::Steps, "a list of at least one step",
     [](const Value& value) {
         return value.kind == Kind::List;
     }},
    {MemberType::Text, "a text", IsText},
    {MemberType::TextOrNull, "null or a text",
     [](const Value& value) {
         return IsText(value) || IsNull(value);
     }},
    {MemberType::Texts, "an object whose members are texts",
     [](const Value& value) {
         return value.kind == Kind::Object;
     }},
};

const TypeRule& RuleOf(MemberType type) {
    return *std::find_if(std::begin(kTypes), std::end(kTypes),
                         [&](const TypeRule& rule) { return rule.type == type; });
}

/// What is wrong with the value of a member; empty when nothing is.
std::string FaultOf(const MemberRule& member, const Value& value) {
    const std::string name = QuotedExcerpt(member.name);
    if (!RuleOf(member.type).fits(value)) {
        if (!IsInteger(value))
            return name + " is " + std::string(StepLine::NameOf(value.kind));
        if (value.number == 0)
            return name + " is 0";
        const bool isTooLarge = value.number > kMostId;
        return name + " is " + std::string(StepLine::NameOf(isTooLarge ? Kind::TooLarge : Kind::Integer));
    }
    const bool holdsSteps = member.type == MemberType::Steps;
    if (holdsSteps && value.steps.empty() && value.stepFault.empty())
        return name + " is an empty list";
    const std::string& fault = holdsSteps ? value.stepFault : value.fault;
    return fault.empty() ? fault : "in " + name + ", " + fault;
}

void RequireFit(const MemberRule& member, const Value& value) {
    if (const std::string fault = FaultOf(member, value); !fault.empty())
        throw std::invalid_argument(fault + "; it must be " + std::string(RuleOf(member.type).words));
}

const StepRule& RuleOf(const StepLine& line, StepPlace place) {
    const char* const isOneOf =
        place == StepPlace::Reaction ? "; from inside a call it is one of " : "; it is one of ";
    const Value* const does = line.Find("do");
    if (does == nullptr)
        throw std::invalid_argument(std::string("\"do\" is missing") + isOneOf + ListOfSteps(place));
    if (!IsText(*does))
        throw std::invalid_argument("\"do\" is " + std::string(StepLine::NameOf(does->kind)) + isOneOf +
                                    ListOfSteps(place));
    const StepRule* const rule = FindRule(does->text, place);
    if (rule == nullptr)
        throw std::invalid_argument("unknown \"do\" " + QuotedExcerpt(does->text) + isOneOf +
                                    ListOfSteps(place));
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
        throw std::invalid_argument("unknown member " + QuotedExcerpt(name) + "; " +
                                    QuotedExcerpt(rule.name) + " takes " +
                                    (takesNone ? "none" : ListOfNames(rule)));
    }
}

} // namespace

Step ReadStep(const StepLine& line, StepPlace place) {
    const StepRule& rule = RuleOf(line, place);
    RequireKnown(line, rule);
    Step step;
    step.kind = rule.kind;
    for (const MemberRule& member : rule) {
        const Value* const value = line.Find(member.name);
        if (value == nullptr && member.isRequired)
            throw std::invalid_argument(QuotedExcerpt(member.name) + " is missing; it must be " +
                                        std::string(RuleOf(member.type).words));
        if (value == nullptr)
            continue;
        RequireFit(member, *value);
        member.store(step, *value);
    }
    step.echo = line.ToText();
    return step;
}

Step Step::Read(const std::string& line) {
    return ReadStep(StepLine::Read(line), StepPlace::Scenario);
}

Step Step::Plain(StepKind kind) {
    Step step;
    step.kind = kind;
    step.echo = "{\"do\":\"" + std::string(RuleOf(kind).name) + "\"}";
    return step;
}
