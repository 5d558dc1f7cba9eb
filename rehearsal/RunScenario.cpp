#include "rehearsal/RunScenario.h"

#include "rehearsal/LineReader.h"

namespace {

bool IsStep(const std::string& line) {
    return line.find_first_not_of(" \t\r") != std::string::npos && line.front() != '#';
}

bool ReadLine(LineReader& lines, std::string& line) {
    try {
        return lines.Next(line);
    } catch (const std::exception& error) {
        throw ScenarioError(lines.Number(), error.what());
    }
}

Step ReadStep(const LineReader& lines, const std::string& line, const Rehearsal& rehearsal) {
    try {
        Step step = Step::Read(line);
        rehearsal.Judge(step);
        return step;
    } catch (const std::invalid_argument& error) {
        throw ScenarioError(lines.Number(), error.what());
    }
}

void DoStep(const LineReader& lines, const Step& step, Rehearsal& rehearsal) {
    try {
        rehearsal.Do(step);
    } catch (const NestingError& error) {
        throw ScenarioError(lines.Number(), error.what());
    }
}

} // namespace

void RunScenario(std::istream& scenario, const DriverCreator& create, TraceSink& sink, bool showLookUps) {
    Rehearsal rehearsal(create, sink, showLookUps);
    LineReader lines(scenario);
    std::string line;
    while (ReadLine(lines, line)) {
        if (IsStep(line))
            DoStep(lines, ReadStep(lines, line, rehearsal), rehearsal);
        if (lines.MayWait())
            sink.Flush();
    }
    rehearsal.Finish();
}
