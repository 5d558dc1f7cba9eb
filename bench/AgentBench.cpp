#include "bench/AgentAtWork.h"
#include "bench/BareParse.h"
#include "bench/SavedState.h"

#include <optional>

#include <benchmark/benchmark.h>
#include <malloc.h>

namespace {

std::size_t Count(const benchmark::State& state) {
    return static_cast<std::size_t>(state.range(0));
}

/// Reads the saved state; an announcement comes and goes, so that the heap has sorted what that large tree
/// left behind.
void Settle(AgentAtWork& agent, std::size_t count) {
    agent.Initialize(*SavedTree(count)->GetRootNode());
    agent.AddAnnouncement(AnnouncementText(count + 1));
    agent.RemoveAnnouncement(static_cast<std::uint32_t>(count + 1));
}

void BareParseOfTheSameText(benchmark::State& state) {
    const std::string text = SavedState(Count(state));
    while (state.KeepRunning())
        BareParse(text);
}

void Initialize(benchmark::State& state) {
    const auto saved = SavedTree(Count(state));
    std::optional<AgentAtWork> agent;
    while (state.KeepRunning()) {
        state.PauseTiming();
        agent.emplace();
        state.ResumeTiming();
        agent->Initialize(*saved->GetRootNode());
    }
}

void ParseAndInitialize(benchmark::State& state) {
    const std::string saved = SavedState(Count(state));
    std::optional<AgentAtWork> agent;
    while (state.KeepRunning()) {
        state.PauseTiming();
        agent.emplace();
        state.ResumeTiming();
        agent->ParseAndInitialize(saved);
    }
}

void GetAnnouncements(benchmark::State& state) {
    AgentAtWork agent;
    agent.Initialize(*SavedTree(Count(state))->GetRootNode());
    while (state.KeepRunning())
        benchmark::DoNotOptimize(agent.GetAnnouncements());
}

void GetAnnouncement(benchmark::State& state) {
    AgentAtWork agent;
    Settle(agent, Count(state));
    while (state.KeepRunning())
        benchmark::DoNotOptimize(agent.GetAnnouncement(static_cast<std::uint32_t>(Count(state) / 2)));
}

void ModifyRoom(benchmark::State& state) {
    AgentAtWork agent;
    Settle(agent, Count(state));
    while (state.KeepRunning())
        agent.ModifyRoom(static_cast<std::uint32_t>(Count(state) / 2));
}

void RemoveAnnouncement(benchmark::State& state) {
    AgentAtWork agent;
    agent.Initialize(*SavedTree(Count(state))->GetRootNode());
    const std::string again = AnnouncementText(Count(state) + 1);
    while (state.KeepRunning()) {
        state.PauseTiming();
        agent.AddAnnouncement(again);
        state.ResumeTiming();
        agent.RemoveAnnouncement(static_cast<std::uint32_t>(Count(state) + 1));
    }
}

/// The heap's bytes that are in use for each announcement, once the agent has read them and the tree is gone.
void MemoryOfTheAgent(benchmark::State& state) {
    double bytes = 0;
    while (state.KeepRunning()) {
        AgentAtWork agent;
        const std::size_t before = mallinfo2().uordblks;
        agent.Initialize(*SavedTree(Count(state))->GetRootNode());
        bytes = static_cast<double>(mallinfo2().uordblks - before);
    }
    state.counters["bytes"] = bytes / static_cast<double>(Count(state));
}

BENCHMARK(BareParseOfTheSameText)->Arg(2500)->Arg(10000)->Arg(40000)->Unit(benchmark::kMicrosecond);
BENCHMARK(Initialize)->Arg(2500)->Arg(10000)->Arg(40000)->Unit(benchmark::kMicrosecond);
BENCHMARK(ParseAndInitialize)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(GetAnnouncements)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(GetAnnouncement)->Arg(100)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(ModifyRoom)->Arg(100)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(RemoveAnnouncement)->Arg(100)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(MemoryOfTheAgent)->Arg(10000)->Unit(benchmark::kMicrosecond);

} // namespace
