#pragma once

#include "rehearsal/Reaction.h"
#include "rehearsal/TraceSink.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string_view>
#include <vector>

class Trace;

/// Thrown when reactions have caused each other, call within call, to a depth that no host has. It passes
/// through the agent as every `TraceError`.
class NestingError : public TraceError {
public:
    using TraceError::TraceError;
};

/// What the host is to do from inside the agent's calls. Each reaction happens once.
class Reactions {
public:
    using Pointer = std::shared_ptr<const Reaction>;
    /// Does one step of a reaction. What it throws, the call throws at the agent.
    using Doer = std::function<void(const Step&)>;

    static constexpr unsigned kDeepest = 200;

    explicit Reactions(Doer doStep) : m_doStep(std::move(doStep)) {}

    /// The calls that it waits for are counted from now on.
    void Set(Pointer reaction);

    [[nodiscard]] bool IsEmpty() const noexcept { return m_waiting == 0; }

    /// The agent has made this call, and it has taken effect: does what is due at it, in the order of its
    /// setting. A step that throws drops those behind it. Throws what a step throws, and `NestingError`.
    void HappenAt(std::string_view call, Trace& trace);

private:
    /// What waits for one call: by the number of the call at which it is due.
    struct Waiting {
        std::uint64_t calls = 0;
        std::map<std::uint64_t, std::vector<Pointer>> due;
    };

    [[nodiscard]] std::vector<Pointer> TakeDue(std::string_view call);

    const Doer m_doStep;
    std::map<std::string_view, Waiting> m_waitingFor;
    std::size_t m_waiting = 0;
    unsigned m_depth = 0;
};
