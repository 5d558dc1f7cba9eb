#pragma once

#include "rehearsal/JsonTrace.h"
#include "rehearsal/RunScenario.h"
#include "rehearsal/Step.h"
#include "tests/rehearsal/ProbeDriver.h"

#include <fstream>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

using Lines = std::vector<std::string>;

inline Lines SplitLines(const std::string& text) {
    Lines lines;
    std::istringstream input(text);
    for (std::string line; std::getline(input, line);)
        lines.push_back(line);
    return lines;
}

inline std::string FileText(const std::string& file) {
    const std::ifstream input(file);
    std::ostringstream text;
    text << input.rdbuf();
    return text.str();
}

/// A line as its step is printed.
inline std::string EchoOf(const std::string& line) {
    return Step::Read(line).echo;
}

/// The message about a bad line.
inline std::string FaultOf(const std::string& line) {
    try {
        const Step step = Step::Read(line);
        return "none: " + step.echo;
    } catch (const std::invalid_argument& error) {
        return error.what();
    }
}

/// The line of a scenario that gives the driver a command.
inline std::string Command(const std::string& name, const std::string& params = "{}") {
    return R"({"do":"command","name":")" + name + R"(","params":)" + params + "}\n";
}

/// What a run printed, and how it ended.
struct Outcome {
    Lines trace;
    std::string error;      ///< of the bad line; empty when there was none
    std::uint64_t line = 0; ///< its number
};

/// Runs a scenario with the probe, or another driver.
inline Outcome RunText(const std::string& scenario,
                       bool showLookUps = false,
                       const DriverCreator& create = ProbeDriver::Create) {
    std::istringstream input(scenario);
    std::ostringstream output;
    JsonTrace sink(output);
    Outcome run;
    try {
        RunScenario(input, create, sink, showLookUps);
    } catch (const ScenarioError& error) {
        run.error = error.what();
        run.line = error.Line();
    }
    sink.Flush();
    run.trace = SplitLines(output.str());
    return run;
}

/// The lines behind the registrations of the first agent, up to the final `destroy`: what the scenario itself
/// does.
inline Lines Between(const Lines& trace) {
    std::size_t begin = 0;
    for (std::size_t index = 0; index < trace.size(); ++index)
        if (trace[index].find(R"(,"call":"UICmdDispatcher.)") != std::string::npos)
            begin = index + 1;
    std::size_t end = trace.size();
    while (end > begin && trace[end - 1].find(R"("step":{"do":"destroy"})") == std::string::npos)
        --end;
    return {trace.begin() + static_cast<std::ptrdiff_t>(begin),
            trace.begin() + static_cast<std::ptrdiff_t>(end > begin ? end - 1 : trace.size())};
}

/// What a scenario of the probe does between its registration and its destruction. The scenario must not
/// create agents by itself more than once.
inline Lines Played(const std::string& scenario, bool showLookUps = false) {
    const Outcome run = RunText(scenario, showLookUps);
    return run.error.empty() ? Between(run.trace) : Lines{run.error};
}
