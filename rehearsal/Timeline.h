#pragma once

#include "rehearsal/TextOutput.h"
#include "rehearsal/TraceSink.h"

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

/// The run for people: one line an event, the virtual time in seconds, the steps at the margin marked `>`,
/// and what belongs to an announcement indented under its start, behind its id. What the host does from
/// inside a call stands further in. Throws `TraceError` when it cannot be written. Call `Flush` at the end.
class Timeline final : public TraceSink {
public:
    /// `output` is borrowed for life.
    explicit Timeline(std::ostream& output) : m_output(output, "the timeline") {}

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
    void Flush() override { m_output.Flush(); }

private:
    using AnnouncementId = std::uint32_t;
    /// A call inside which the host does something.
    struct Inside {
        std::string operation;
        std::optional<AnnouncementId> subject; ///< the one that the call belongs to
    };

    void StepInside(VirtualTime now, const Step& step);
    void Leave();
    void Line(VirtualTime now, std::string_view indent, std::string_view text);
    void AgentLine(VirtualTime now, std::string_view text);
    void AnnouncementLine(VirtualTime now, std::string_view text);
    void NoteTimers(const HostCall& call);

    TextOutput m_output;
    std::optional<AnnouncementId> m_playing;                     ///< the one that started last
    std::optional<AnnouncementId> m_subject;                     ///< the one that present events belong to
    std::unordered_map<std::uint32_t, AnnouncementId> m_ownerOf; ///< by timer
    std::vector<Inside> m_inside;                                ///< the innermost last
};
