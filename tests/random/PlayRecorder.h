#pragma once

#include "rehearsal/JsonTrace.h"

#include <cstdint>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>

/// Writes down what an agent does to its host, so that it can be compared with what another one does at
/// another time: times and timers are counted from the beginning of the record, and the polls are left out.
/// Hands all events on.
class PlayRecorder final : public TraceSink {
public:
    /// `next` is borrowed for life.
    explicit PlayRecorder(TraceSink& next) : m_next(next), m_trace(m_text) {}

    /// Begins anew with the next event.
    void Restart();
    [[nodiscard]] std::string Text();

    void StepBegins(VirtualTime now, const Step& step) override;
    void Called(VirtualTime now, const HostCall& call) override;
    void TimerFired(VirtualTime now, std::uint32_t timerId, TimerOwner owner) override;
    void CalledBack(VirtualTime now, std::string_view operation) override;
    void Replied(VirtualTime now, const std::string& xml) override;
    void Saved(VirtualTime now, const std::string& xml) override;
    void Answered(VirtualTime now, bool answer) override;
    void HandlerMissing(VirtualTime now, std::string_view name) override;
    void Thrown(VirtualTime now, std::string_view type, std::string_view text) override;
    void ReactionBegins(VirtualTime now, std::string_view operation) override;
    void GoesOn(VirtualTime now, std::string_view operation) override;

private:
    [[nodiscard]] VirtualTime Since(VirtualTime now);
    [[nodiscard]] std::uint32_t NumberOf(std::uint32_t timerId);

    TraceSink& m_next;
    std::ostringstream m_text;
    JsonTrace m_trace;
    std::optional<VirtualTime> m_begin;
    std::map<std::uint32_t, std::uint32_t> m_numbers; ///< of the announcements' timers
};
