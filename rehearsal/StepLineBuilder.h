#pragma once

#include "rehearsal/StepLine.h"

#include <cstddef>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

/// Takes a JSON parser's events within one object, and makes the members of a line of them. It builds no more
/// than a step can be made of, whatever the object holds, and leaves out what lies deeper.
class StepLineBuilder {
public:
    /// `mayHoldSteps`: whether objects in a list are steps, or are left out.
    explicit StepLineBuilder(bool mayHoldSteps) : m_mayHoldSteps(mayHoldSteps) {}

    /// A value, without what is inside a list or an object.
    void Take(StepLine::Value&& value);
    void Open(StepLine::Value::Kind kind);
    void Close();
    /// Throws `std::invalid_argument` when there are more members than any step takes.
    void Key(std::string& name);

    /// Whether the object itself has been closed.
    [[nodiscard]] bool IsComplete() const noexcept { return m_depth == 0; }
    [[nodiscard]] StepLine& Result() noexcept { return m_line; }

private:
    void TakeElement(const StepLine::Value& value);
    void TakeText(StepLine::Value& value);
    void JudgeTexts();

    [[nodiscard]] StepLine::Value& Current() { return m_line.members[m_member].second; }

    const bool m_mayHoldSteps;
    StepLine m_line;
    std::size_t m_depth = 1; ///< 1 at the object's own members, 2 within a list or an object among them
    std::size_t m_member = 0;
    std::unique_ptr<StepLineBuilder> m_step; ///< the one being read in a list
    std::string m_key;                       ///< within the member that is an object
    std::unordered_map<std::string, std::size_t> m_textOf;
    std::vector<StepLine::Value::Kind> m_kindOfText;
};
