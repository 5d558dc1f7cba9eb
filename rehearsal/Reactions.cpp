#include "rehearsal/Reactions.h"

#include "rehearsal/Trace.h"

#include <string>
#include <utility>

namespace {

/// One reaction more is going on, for as long as it lives.
class Depth {
public:
    explicit Depth(unsigned& depth) : m_depth(depth) { ++m_depth; }
    ~Depth() { --m_depth; }
    Depth(const Depth&) = delete;
    Depth& operator=(const Depth&) = delete;

private:
    unsigned& m_depth;
};

} // namespace

void Reactions::Set(Pointer reaction) {
    Waiting& waiting = m_waitingFor[reaction->call];
    waiting.due[waiting.calls + reaction->nth].push_back(std::move(reaction));
    ++m_waiting;
}

std::vector<Reactions::Pointer> Reactions::TakeDue(std::string_view call) {
    const auto found = m_waitingFor.find(call);
    if (found == m_waitingFor.end())
        return {};
    Waiting& waiting = found->second;
    ++waiting.calls;
    auto due = waiting.due.extract(waiting.calls);
    if (due.empty())
        return {};
    m_waiting -= due.mapped().size();
    return std::move(due.mapped());
}

void Reactions::HappenAt(std::string_view call, Trace& trace) {
    // Taken before anything of them is done: the calls that they cause are for those that still wait.
    const std::vector<Pointer> due = TakeDue(call);
    if (due.empty())
        return;
    if (m_depth == kDeepest)
        throw NestingError("reactions cause each other at " + std::string(call) +
                           ", call within call; at most " + std::to_string(kDeepest) + " may be going on");
    const Depth deeper(m_depth);
    trace.Tell(&TraceSink::ReactionBegins, call);
    for (const Pointer& reaction : due) {
        for (const Step& step : reaction->steps)
            m_doStep(step);
    }
    trace.Tell(&TraceSink::GoesOn, call);
}
