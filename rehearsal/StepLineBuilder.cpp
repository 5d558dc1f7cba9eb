#include "rehearsal/StepLineBuilder.h"

#include "rehearsal/JsonText.h"

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <tuple>
#include <utility>

namespace {

using Value = StepLine::Value;
using Kind = Value::Kind;

constexpr std::size_t kMostMembers = 64;
constexpr std::size_t kUsualMembers = 4;

} // namespace

void StepLineBuilder::Key(std::string& name) {
    if (m_step)
        return m_step->Key(name);
    if (m_depth == 2) {
        m_key = std::move(name);
        return;
    }
    if (m_depth != 1)
        return;
    const auto known = std::find_if(m_line.members.begin(), m_line.members.end(),
                                    [&](const auto& member) { return member.first == name; });
    m_member = static_cast<std::size_t>(known - m_line.members.begin());
    if (known != m_line.members.end())
        return;
    if (m_line.members.size() == kMostMembers)
        throw std::invalid_argument("it has more members than any step takes");
    if (m_line.members.empty())
        m_line.members.reserve(kUsualMembers); // members are large to be moved
    m_line.members.emplace_back(std::piecewise_construct, std::forward_as_tuple(std::move(name)),
                                std::forward_as_tuple());
}

void StepLineBuilder::Take(Value&& value) {
    if (m_step)
        m_step->Take(std::move(value));
    else if (m_depth == 1)
        Current() = std::move(value);
    else if (m_depth == 2)
        Current().kind == Kind::List ? TakeElement(value) : TakeText(value);
}

void StepLineBuilder::TakeElement(const Value& value) {
    Value& list = Current();
    const bool isId =
        value.kind == Kind::Integer && value.number <= std::numeric_limits<std::uint32_t>::max();
    if (!isId && list.fault.empty())
        list.fault = "element " + std::to_string(list.ids.size() + 1) + " is " +
                     std::string(StepLine::NameOf(value.kind == Kind::Integer ? Kind::TooLarge : value.kind));
    if (value.kind != Kind::Object && list.stepFault.empty())
        list.stepFault = "element " + std::to_string(list.steps.size() + 1) + " is " +
                         std::string(StepLine::NameOf(value.kind));
    if (isId)
        list.ids.push_back(static_cast<std::uint32_t>(value.number));
}

void StepLineBuilder::TakeText(Value& value) {
    auto& texts = Current().texts;
    const auto [place, isNew] = m_textOf.try_emplace(m_key, texts.size());
    if (isNew) {
        texts.emplace_back(m_key, std::string());
        m_kindOfText.emplace_back();
    }
    texts[place->second].second = std::move(value.text);
    m_kindOfText[place->second] = value.kind;
}

void StepLineBuilder::Open(Kind kind) {
    if (m_step)
        return m_step->Open(kind);
    Value value;
    value.kind = kind;
    Take(std::move(value));
    if (m_mayHoldSteps && m_depth == 2 && kind == Kind::Object && Current().kind == Kind::List) {
        m_step = std::make_unique<StepLineBuilder>(false);
        return;
    }
    ++m_depth;
    if (m_depth == 2) {
        m_textOf.clear();
        m_kindOfText.clear();
    }
}

void StepLineBuilder::Close() {
    if (m_step) {
        m_step->Close();
        if (m_step->IsComplete()) {
            Current().steps.push_back(std::move(m_step->Result()));
            m_step.reset();
        }
        return;
    }
    --m_depth;
    if (m_depth == 1 && Current().kind == Kind::Object)
        JudgeTexts();
}

void StepLineBuilder::JudgeTexts() {
    const auto fault =
        std::find_if(m_kindOfText.begin(), m_kindOfText.end(), [](Kind kind) { return kind != Kind::Text; });
    if (fault == m_kindOfText.end())
        return;
    const auto& name = Current().texts[static_cast<std::size_t>(fault - m_kindOfText.begin())].first;
    Current().fault = QuotedExcerpt(name) + " is " + std::string(StepLine::NameOf(*fault));
}
