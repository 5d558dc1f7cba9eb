#include "bench/SavedState.h"
#include "framework/DriverModule.h"
#include "rehearsal/JsonTrace.h"
#include "rehearsal/RunScenario.h"

#include <nlohmann/json.hpp>

#include <fstream>
#include <sstream>

#include <benchmark/benchmark.h>

namespace {

/// A scenario of so many plays, each with sound and popup, from command to completion.
std::string Scenario(std::size_t plays) {
    const nlohmann::ordered_json initialize{{"do", "initialize"}, {"state", SavedState(1)}};
    std::string text = R"({"do":"host","stream_ready_ms":100,"play_ms":2000})"
                       "\n" +
                       initialize.dump() +
                       "\n"
                       R"({"do":"register"})"
                       "\n";
    for (std::size_t play = 0; play < plays; ++play)
        text += R"({"do":"command","name":"execute_announcement","params":{"id":"1"}})"
                "\n"
                R"({"do":"advance","ms":7000})"
                "\n";
    return text;
}

void PlayRehearsed(std::istream& scenario, const DriverModule& module, TraceSink& sink) {
    RunScenario(
        scenario, [&](IInstanceManager& instances) { return module.Create(instances); }, sink, false);
}

void FullPlays(benchmark::State& state) {
    const auto plays = static_cast<std::size_t>(state.range(0));
    const std::string text = Scenario(plays);
    const DriverModule module(MODULE);
    std::ofstream nowhere("/dev/null");
    while (state.KeepRunning()) {
        std::istringstream scenario(text);
        JsonTrace trace(nowhere);
        PlayRehearsed(scenario, module, trace);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(FullPlays)->Arg(2000)->Unit(benchmark::kMicrosecond);

} // namespace
