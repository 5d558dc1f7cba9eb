#include "rehearsal/StepLine.h"

#include "rehearsal/JsonText.h"

#include <algorithm>
#include <array>

namespace {

using Value = StepLine::Value;
using Kind = Value::Kind;

/// A list holds either ids or steps.
void AppendList(std::string& out, const Value& list) {
    const char* separator = "";
    for (const std::uint32_t id : list.ids) {
        out.append(separator);
        AppendNumber(out, id);
        separator = ",";
    }
    for (const StepLine& step : list.steps) {
        out.append(separator).append(step.ToText());
        separator = ",";
    }
}

void AppendTexts(std::string& out, const std::vector<std::pair<std::string, std::string>>& texts) {
    const char* separator = "";
    for (const auto& [name, text] : texts) {
        out.append(separator);
        AppendJsonText(out, name);
        out.push_back(':');
        AppendJsonText(out, text);
        separator = ",";
    }
}

void AppendValue(std::string& out, const Value& value) {
    switch (value.kind) {
    case Kind::Flag:
        out.append(value.flag ? "true" : "false");
        return;
    case Kind::Integer:
        AppendNumber(out, value.number);
        return;
    case Kind::Text:
        AppendJsonText(out, value.text);
        return;
    case Kind::List:
        out.push_back('[');
        AppendList(out, value);
        out.push_back(']');
        return;
    case Kind::Object:
        out.push_back('{');
        AppendTexts(out, value.texts);
        out.push_back('}');
        return;
    default: // the others are in no good step
        out.append("null");
    }
}

} // namespace

std::string StepLine::ToText() const {
    std::string echo;
    for (const auto& [name, value] : members) {
        echo.push_back(echo.empty() ? '{' : ',');
        AppendJsonText(echo, name);
        echo.push_back(':');
        AppendValue(echo, value);
    }
    echo.push_back('}');
    return echo;
}

const StepLine::Value* StepLine::Find(std::string_view name) const {
    const auto found = std::find_if(members.begin(), members.end(),
                                    [&](const auto& member) { return member.first == name; });
    return found != members.end() ? &found->second : nullptr;
}

std::string_view StepLine::NameOf(Value::Kind kind) {
    constexpr std::array<std::string_view, 9> kNames{"null",
                                                     "a flag",
                                                     "a number",
                                                     "a number below 0",
                                                     "a number with fraction or exponent",
                                                     "a number too large",
                                                     "a text",
                                                     "a list",
                                                     "an object"};
    return kNames[static_cast<std::size_t>(kind)];
}
