#pragma once

#include "rehearsal/Rehearsal.h"
#include "rehearsal/TraceSink.h"

#include <cstdint>
#include <istream>
#include <stdexcept>
#include <string>

/// A scenario that cannot be run on: what is wrong with which line.
class ScenarioError : public std::runtime_error {
public:
    ScenarioError(std::uint64_t line, const std::string& what) : std::runtime_error(what), m_line(line) {}

    /// The line's number, from 1.
    [[nodiscard]] std::uint64_t Line() const noexcept { return m_line; }

private:
    std::uint64_t m_line;
};

/// Does the steps of a scenario, read line by line, one after another, and destroys the agent at the end.
/// Everything that happens reaches `sink`; nothing is kept from one run to the next.
///
/// Throws `ScenarioError` for a bad line, of which nothing was done, for one whose reactions cause each other
/// without end in sight, and for a text that cannot be read; `TraceError` when the sink takes no more. The
/// agent is then destroyed unseen.
void RunScenario(std::istream& scenario, const DriverCreator& create, TraceSink& sink, bool showLookUps);
