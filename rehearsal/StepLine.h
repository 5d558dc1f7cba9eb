#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// The members of a scenario's line, or of a step in its "steps": JSON, but not yet a step.
struct StepLine {
    /// A member's value; lists hold ids or the steps of a reaction, and objects hold texts, as no step needs
    /// any other.
    struct Value {
        enum class Kind { Null, Flag, Integer, Negative, Fraction, TooLarge, Text, List, Object };
        Kind kind = Kind::Null;
        bool flag = false;
        std::uint64_t number = 0;
        std::string text;
        std::vector<std::uint32_t> ids;
        std::vector<StepLine> steps;
        std::vector<std::pair<std::string, std::string>> texts;
        std::string fault; ///< what in the list is no id, or in the object no text; empty when all is well
        std::string stepFault; ///< what in the list is no object; empty when all is well
    };

    /// In the order of their first mention; the last value counts.
    std::vector<std::pair<std::string, Value>> members;

    /// The value of this member, or null.
    [[nodiscard]] const Value* Find(std::string_view name) const;

    /// Reads one line. Throws `std::invalid_argument`, which says why it is no JSON object.
    [[nodiscard]] static StepLine Read(const std::string& line);

    /// As JSON text without blanks; all its values must be such as a step can have.
    [[nodiscard]] std::string ToText() const;

    /// What a value of this kind is called: "a text".
    [[nodiscard]] static std::string_view NameOf(Value::Kind kind);
};
