#pragma once

#include "rehearsal/JsonText.h"
#include "rehearsal/Step.h"
#include "rehearsal/StepLine.h"

#include <cstddef>
#include <string>
#include <string_view>

/// What a member may be.
enum class MemberType {
    Flag,
    Id,
    IdsOrNull,
    Milliseconds,
    MillisecondsOrNull,
    Nth,
    Steps,
    Text,
    TextOrNull,
    Texts
};

/// One member that a step may have.
struct MemberRule {
    std::string_view name;
    MemberType type;
    bool isRequired;
    /// Takes a value of the type. Throws `std::invalid_argument` when it is wrong all the same.
    void (*store)(Step& step, const StepLine::Value& value);
};

/// Where a step may stand: on a line of its own, or in a reaction.
enum class StepPlace { Scenario, Reaction, Anywhere };

/// What a step's line looks like.
struct StepRule {
    static constexpr std::size_t kMostMembers = 8;

    std::string_view name;
    StepKind kind;
    StepPlace place;
    MemberRule members[kMostMembers];

    [[nodiscard]] const MemberRule* begin() const { return members; }
    [[nodiscard]] const MemberRule* end() const;
    [[nodiscard]] bool MayStand(StepPlace where) const {
        return place == where || place == StepPlace::Anywhere;
    }
};

/// The rule of that name, or null when no step of that name may stand there.
[[nodiscard]] const StepRule* FindRule(std::string_view name, StepPlace place);
[[nodiscard]] const StepRule& RuleOf(StepKind kind);

/// The names of the steps that may stand there, for messages.
[[nodiscard]] std::string ListOfSteps(StepPlace place);

/// The names of these, for messages.
template <class Named>
std::string ListOfNames(const Named& items) {
    std::string list;
    for (const auto& item : items)
        list.append(list.empty() ? "" : ", ").append(QuotedExcerpt(item.name));
    return list;
}

/// Reads a step by its rule. Throws `std::invalid_argument`, which says what is wrong with it and what would
/// be right.
[[nodiscard]] Step ReadStep(const StepLine& line, StepPlace place);
