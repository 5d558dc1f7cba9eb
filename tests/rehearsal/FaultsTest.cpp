#include "framework/DriverModule.h"
#include "tests/rehearsal/Support.h"

#include <gtest/gtest.h>

namespace {

/// Lets the n-th call fail, and passes everything on.
class FailingSink final : public TraceSink {
public:
    FailingSink(TraceSink& next, unsigned failing) : m_next(next), m_failing(failing) {}

    void StepBegins(VirtualTime now, const Step& step) override { m_next.StepBegins(now, step); }
    void Called(VirtualTime now, const HostCall& call) override {
        if (++m_calls == m_failing)
            throw std::string("call ") + std::to_string(m_failing) + " fails";
        m_next.Called(now, call);
    }
    void TimerFired(VirtualTime now, std::uint32_t timerId, TimerOwner owner) override {
        m_next.TimerFired(now, timerId, owner);
    }
    void CalledBack(VirtualTime now, std::string_view operation) override {
        m_next.CalledBack(now, operation);
    }
    void Replied(VirtualTime now, const std::string& xml) override { m_next.Replied(now, xml); }
    void Saved(VirtualTime now, const std::string& xml) override { m_next.Saved(now, xml); }
    void Answered(VirtualTime now, bool answer) override { m_next.Answered(now, answer); }
    void HandlerMissing(VirtualTime now, std::string_view name) override { m_next.HandlerMissing(now, name); }
    void Thrown(VirtualTime now, std::string_view type, std::string_view text) override {
        m_next.Thrown(now, type, text);
    }
    void ReactionBegins(VirtualTime now, std::string_view operation) override {
        m_next.ReactionBegins(now, operation);
    }
    void GoesOn(VirtualTime now, std::string_view operation) override { m_next.GoesOn(now, operation); }

    [[nodiscard]] unsigned Calls() const { return m_calls; }

private:
    TraceSink& m_next;
    unsigned m_failing;
    unsigned m_calls = 0;
};

/// Takes nothing.
class FullBuffer final : public std::streambuf {
protected:
    int_type overflow(int_type /*next*/) override { return traits_type::eof(); }
};

/// A scenario is run with the n-th call failing; gives the number of calls, and the trace.
unsigned
RunFailing(const std::string& scenario, const DriverCreator& create, unsigned failing, std::string& trace) {
    std::istringstream input(scenario);
    std::ostringstream output;
    JsonTrace json(output);
    FailingSink sink(json, failing);
    RunScenario(input, create, sink, true);
    json.Flush();
    trace = output.str();
    return sink.Calls();
}

TEST(FaultsTest, TheAgentSurvivesAHostThatThrowsAtAnyCallOfAFullPlay) {
    const DriverModule module(MODULE);
    const auto create = [&](IInstanceManager& instances) {
        return module.Create(instances);
    };
    const std::string play = FileText(SCENARIOS "/first_play.jsonl");
    const std::string again = "\n{\"do\":\"advance\",\"ms\":60000}\n"
                              "{\"do\":\"request\",\"name\":\"get_announcements\"}\n";
    std::string trace;
    const unsigned calls = RunFailing(play + again, create, 0, trace);
    ASSERT_GT(calls, 50U);
    for (unsigned failing = 1; failing <= calls; ++failing) {
        SCOPED_TRACE(failing);
        RunFailing(play + again, create, failing, trace);
        // Whatever failed, the agent is there at the end, and is destroyed.
        EXPECT_NE(trace.find(R"("step":{"do":"destroy"}})"), std::string::npos);
    }
}

TEST(FaultsTest, AThrowingHostLeavesNothingArmedOrPublished) {
    const std::string scenario = "{\"do\":\"command\",\"name\":\"arm_managed\",\"params\":{\"ms\":\"5\"}}\n"
                                 "{\"do\":\"advance\",\"ms\":9}";
    std::string trace;
    const unsigned calls = RunFailing(scenario, ProbeDriver::Create, 0, trace);
    for (unsigned failing = 1; failing <= calls; ++failing) {
        SCOPED_TRACE(failing);
        RunFailing(scenario, ProbeDriver::Create, failing, trace);
        const bool isArmed = trace.find(R"("call":"ITimerManager.AddTimer")") != std::string::npos;
        const bool hasFired = trace.find(R"("of":"announcement")") != std::string::npos;
        EXPECT_EQ(isArmed, hasFired);
    }
}

TEST(FaultsTest, ATraceThatCannotBeWrittenEndsTheRunInTheMiddleOfAnAdvance) {
    const DriverModule module(MODULE);
    FullBuffer full;
    std::ostream output(&full);
    JsonTrace sink(output);
    // The surplus poll that an idle re-execution leaves behind goes on for as long as there is time.
    std::istringstream scenario(
        R"({"do":"initialize","state":"<announcements><announcement><id>1</id><rooms/>)"
        R"(<navigators/></announcement></announcements>"})"
        "\n"
        R"({"do":"register"})"
        "\n"
        R"({"do":"command","name":"execute_announcement","params":{"id":"1"}})"
        "\n"
        R"({"do":"command","name":"execute_announcement","params":{"id":"0"}})"
        "\n"
        R"({"do":"advance","ms":18446744073709551615})"
        "\n");
    EXPECT_THROW(
        RunScenario(
            scenario, [&](IInstanceManager& instances) { return module.Create(instances); }, sink, false),
        TraceError);
}

} // namespace
