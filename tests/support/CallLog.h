#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

/// What happens at the fake host, in order, as one text a call: "Interface.Operation(arguments)". Can make
/// any of the calls throw.
class CallLog {
public:
    /// A call of the agent on its host.
    void Call(const std::string& line) {
        m_lines.push_back(line);
        CountOne(line);
    }

    /// A look-up is a call like any other, but stands in the list only when it is asked for.
    void LookUp(const std::string& line) {
        if (m_showsLookUps)
            m_lines.push_back(line);
        CountOne(line);
    }

    /// Something that the host does by itself: a timer fires, an exception arrives.
    void Event(const std::string& line) { m_lines.push_back(line); }

    void ShowLookUps() { m_showsLookUps = true; }

    /// The n-th call from now on, look-ups included, throws a `std::string`; 0: none does.
    void ThrowAtCall(std::size_t n) { m_callsUntilThrow = n; }
    /// Whether the call that is to throw has not come yet.
    [[nodiscard]] bool WillThrow() const { return m_callsUntilThrow > 0; }
    /// Whether a call has thrown.
    [[nodiscard]] bool HasThrown() const { return m_hasThrown; }

    /// What has been listed since the last time.
    std::vector<std::string> Take() { return std::exchange(m_lines, {}); }

private:
    void CountOne(const std::string& line) {
        if (m_callsUntilThrow == 0 || --m_callsUntilThrow > 0)
            return;
        m_hasThrown = true;
        throw "no " + line;
    }

    std::vector<std::string> m_lines;
    bool m_showsLookUps = false;
    std::size_t m_callsUntilThrow = 0;
    bool m_hasThrown = false;
};
