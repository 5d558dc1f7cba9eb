#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

/// What happens at the fake host, in order, as one text a call: "Interface.Operation(arguments)". Can make
/// any of the calls throw, and do something from inside it.
class CallLog {
public:
    /// A call of the agent on its host.
    void Call(const std::string& line) {
        m_lines.push_back(line);
        ComeIn(line);
    }

    /// A look-up is a call like any other, but stands in the list only when it is asked for.
    void LookUp(const std::string& line) {
        if (m_showsLookUps)
            m_lines.push_back(line);
        ComeIn(line);
    }

    /// Something that the host does by itself: a timer fires, an exception arrives.
    void Event(const std::string& line) { m_lines.push_back(line); }

    void ShowLookUps() { m_showsLookUps = true; }

    /// Does `action` inside every call from now on whose line begins so; what it throws leaves the call.
    void WhenCalled(const std::string& beginning, std::function<void()> action) {
        m_reactions.emplace_back(beginning, std::move(action));
    }

    /// The n-th call from now on, look-ups included, throws a `std::string`; 0: none does.
    void ThrowAtCall(std::size_t n) { m_callsUntilThrow = n; }
    /// Whether the call that is to throw has not come yet.
    [[nodiscard]] bool WillThrow() const { return m_callsUntilThrow > 0; }
    /// Whether a call has thrown.
    [[nodiscard]] bool HasThrown() const { return m_hasThrown; }

    /// What has been listed since the last time.
    std::vector<std::string> Take() { return std::exchange(m_lines, {}); }

private:
    void ComeIn(const std::string& line) {
        for (std::size_t index = 0; index < m_reactions.size(); ++index) { // calls come in nested
            if (line.compare(0, m_reactions[index].first.size(), m_reactions[index].first) == 0)
                m_reactions[index].second();
        }
        if (m_callsUntilThrow == 0 || --m_callsUntilThrow > 0)
            return;
        m_hasThrown = true;
        throw "no " + line;
    }

    std::vector<std::string> m_lines;
    std::vector<std::pair<std::string, std::function<void()>>> m_reactions;
    bool m_showsLookUps = false;
    std::size_t m_callsUntilThrow = 0;
    bool m_hasThrown = false;
};
