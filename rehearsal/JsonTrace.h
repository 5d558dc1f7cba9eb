#pragma once

#include "rehearsal/TextOutput.h"
#include "rehearsal/TraceSink.h"

/// The trace: JSON Lines, one event a line, always the same bytes for the same run. Throws `TraceError` when
/// it cannot be written. Call `Flush` at the end.
class JsonTrace final : public TraceSink {
public:
    /// `output` is borrowed for life.
    explicit JsonTrace(std::ostream& output) : m_output(output, "the trace") {}

    void StepBegins(VirtualTime now, const Step& step) override;
    void Called(VirtualTime now, const HostCall& call) override;
    void TimerFired(VirtualTime now, std::uint32_t timerId, TimerOwner owner) override;
    void CalledBack(VirtualTime now, std::string_view operation) override;
    void Replied(VirtualTime now, const std::string& xml) override;
    void Saved(VirtualTime now, const std::string& xml) override;
    void Answered(VirtualTime now, bool answer) override;
    void HandlerMissing(VirtualTime now, std::string_view name) override;
    void Thrown(VirtualTime now, std::string_view type, std::string_view text) override;
    void GoesOn(VirtualTime now, std::string_view operation) override;
    void Flush() override { m_output.Flush(); }

private:
    void Begin(VirtualTime now, std::string_view member);
    void End();
    void Line(VirtualTime now, std::string_view member, std::string_view text);

    TextOutput m_output;
};
