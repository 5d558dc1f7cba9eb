#pragma once

#include "rehearsal/Step.h"
#include "rehearsal/TraceSink.h"
#include "tests/random/ScenarioGenerator.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

/// Watches a run from outside and notes what an agent must never do.
///
/// In every run: timers fire once, in their order of arming at most, never after they were cancelled, and
/// only the announcements' are cancelled; numbers, levels and paths have the one form they can have; no
/// failure but a character pointer leaves the agent, and none unless a request's text was no XML.
///
/// In a meddling run a host's own failures leave the agent, too, and `WaitingReactions` counts what the host
/// is still going to do.
///
/// In a calm run also: events come in the order of the requests, each id once for each time that it was
/// queued, and what was set up in a room is restored in the end. `Flavour::Wild` says what excuses from
/// these.
class ScenarioChecker final : public TraceSink {
public:
    /// `stored` are the ids that the first step loads.
    ScenarioChecker(Flavour flavour, std::set<std::uint32_t> stored);

    /// From now on nothing may happen but polls.
    void ExpectQuiet(bool isQuiet = true) { m_isQuiet = isQuiet; }
    /// All is over: nothing may be set up or waiting.
    void ExpectDrained();

    [[nodiscard]] const std::vector<std::string>& Faults() const { return m_faults; }
    /// What the last save gave.
    [[nodiscard]] const std::string& LastSaved() const { return m_saved; }
    /// The id that the last addition was given; 0 before the first.
    [[nodiscard]] std::uint32_t LastAdded() const { return m_added; }
    [[nodiscard]] std::size_t WaitingReactions() const { return m_reactions.size(); }

    void StepBegins(VirtualTime now, const Step& step) override;
    void Called(VirtualTime now, const HostCall& call) override;
    void TimerFired(VirtualTime now, std::uint32_t timerId, TimerOwner owner) override;
    void CalledBack(VirtualTime now, std::string_view operation) override;
    void Replied(VirtualTime now, const std::string& xml) override;
    void Saved(VirtualTime now, const std::string& xml) override;
    void Answered(VirtualTime /*now*/, bool /*answer*/) override {}
    void HandlerMissing(VirtualTime now, std::string_view name) override;
    void Thrown(VirtualTime now, std::string_view type, std::string_view text) override;
    void ReactionBegins(VirtualTime now, std::string_view operation) override;
    void GoesOn(VirtualTime now, std::string_view operation) override;

private:
    /// A reaction that was set, and how many such calls are still to come until it happens.
    struct Reacting {
        std::string call;
        std::uint32_t left;
    };
    /// What goes on where a reaction ends.
    struct Outside {
        Step step;
        std::string lastCall;
    };

    /// An id that was asked for while another played. One that was not stored all the time may have been
    /// dropped in its turn without a word: it is `loose`, and its place means nothing.
    struct Waiting {
        std::uint32_t id;
        bool isLoose;
    };

    void Check(bool isRight, const std::string& what);
    void CountForReactions(std::string_view operation);
    void LeaveReaction();
    void CheckTimerCall(const HostCall& call);
    void CheckRoomCall(std::string_view operation, const HostCall& call);
    void CheckForms(const HostCall& call);
    void Started(std::uint32_t id);
    void StartedFromQueue(std::uint32_t id);
    void EndOfStep();
    [[nodiscard]] std::string Parameter(const std::string& name) const;

    Flavour m_flavour;
    std::set<std::uint32_t> m_stored;
    std::vector<Waiting> m_waiting;
    std::uint32_t m_lastStarted = 0;

    std::vector<Reacting> m_reactions;
    std::vector<Outside> m_outside; ///< of the reactions that are going on
    Step m_step;
    bool m_hasStarted = false; ///< an event was fired in this step
    std::string m_lastCall;
    std::uint32_t m_lastTimer = 0;
    std::map<std::uint32_t, TimerOwner> m_armed;
    std::map<std::uint32_t, TimerOwner> m_everArmed;
    std::set<std::string> m_setUp; ///< "Audio 12"
    bool m_isRegistered = false;   ///< or is about to be
    bool m_isQuiet = false;
    std::uint32_t m_added = 0;
    std::string m_saved;
    std::vector<std::string> m_faults;
};
