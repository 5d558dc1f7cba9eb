#pragma once

#include "host/VqBaseDriver.h"
#include "rehearsal/Step.h"
#include "rehearsal/VirtualHost.h"

#include <functional>
#include <list>
#include <memory>
#include <string>

/// Makes the agent: `DriverModule::Create`, or another driver to rehearse.
using DriverCreator = std::function<std::unique_ptr<VqBaseDriver>(IInstanceManager&)>;

/// An agent on its virtual host, to which steps are done. Whatever is left of the agent at the end of this
/// object's life is destroyed unseen by the sink.
class Rehearsal {
public:
    /// `sink` is borrowed for life. With `showLookUps` the agent's look-ups reach it, too.
    Rehearsal(DriverCreator create, TraceSink& sink, bool showLookUps);
    Rehearsal(const Rehearsal&) = delete;
    Rehearsal& operator=(const Rehearsal&) = delete;
    ~Rehearsal();

    /// Whether the step can be done as things stand: there is an agent to be destroyed, or none where one is
    /// to be created, and time for an advance. Throws `std::invalid_argument`, which says what would be
    /// right.
    void Judge(const Step& step) const;

    /// Does a step that was found good, with the steps that it needs first. A step whose agent could not be
    /// created, for its constructor threw, is left out. Throws `TraceError` only, of which `NestingError` is
    /// one.
    void Do(const Step& step);

    /// Destroys an agent that still lives, as a step of its own.
    void Finish();

private:
    void RequireAgent(StepKind kind);
    void Perform(const Step& step);
    void Initialize(const Step& step);
    void Request(const Step& step);
    void AskRoom(std::uint32_t roomId);
    void Save();
    void DoInside(const Step& step);
    [[noreturn]] void Throw(const Step& step);

    const DriverCreator m_create;
    VirtualHost m_host;
    std::unique_ptr<VqBaseDriver> m_agent;
    std::list<std::string> m_thrown; ///< what was thrown as `const char*`, which outlives the exceptions
};
