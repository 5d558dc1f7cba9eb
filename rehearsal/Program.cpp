#include "rehearsal/Program.h"

#include "framework/DriverModule.h"
#include "rehearsal/FindModule.h"
#include "rehearsal/JsonTrace.h"
#include "rehearsal/RunScenario.h"
#include "rehearsal/Timeline.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iostream>
#include <memory>

namespace {

constexpr int kFailed = 1;
constexpr int kBadScenario = 2;

int Fail(int status, const std::string& message) {
    std::cerr << "announcement-rehearsal: " << message << '\n';
    return status;
}

std::unique_ptr<TraceSink> MakeSink(bool asTimeline) {
    if (asTimeline)
        return std::make_unique<Timeline>(std::cout);
    return std::make_unique<JsonTrace>(std::cout);
}

int Run(std::istream& scenario, const std::string& name, const Options& options) {
    try {
        const DriverModule module(options.module.empty() ? FindModule() : options.module);
        const auto create = [&](IInstanceManager& instances) {
            return module.Create(instances);
        };
        const auto sink = MakeSink(options.asTimeline);
        try {
            RunScenario(scenario, create, *sink, options.showLookUps);
        } catch (const ScenarioError& error) {
            sink->Flush();
            return Fail(kBadScenario, name + ", line " + std::to_string(error.Line()) + ": " + error.what());
        }
        sink->Flush();
    } catch (const std::exception& error) {
        return Fail(kFailed, error.what());
    }
    return 0;
}

} // namespace

int RunProgram(const Options& options) {
    std::ios::sync_with_stdio(false);
    std::cin.tie(nullptr);
    if (options.scenario == "-")
        return Run(std::cin, "standard input", options);
    std::ifstream file(options.scenario);
    if (!file)
        return Fail(kBadScenario, options.scenario + ": cannot be read: " + std::strerror(errno));
    return Run(file, options.scenario, options);
}
