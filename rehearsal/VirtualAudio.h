#pragma once

#include "host/IAnnouncementAgent.h"
#include "host/IDigitalAudio.h"
#include "host/IInstanceManager.h"
#include "rehearsal/HostSettings.h"
#include "rehearsal/Schedule.h"
#include "rehearsal/Trace.h"

#include <optional>
#include <string>

/// The audio service, which answers by itself where the settings say so. Every `CreateStream` and every
/// `PlayFile` gets an answer of its own, after the time set when it was called; `ReleaseStream` drops all
/// that are still to come.
class VirtualAudio final : public IDigitalAudio {
public:
    /// `registry` is where the agent's face is published; all are borrowed for life.
    VirtualAudio(const HostSettings& settings,
                 Schedule& schedule,
                 const IInstanceManager& registry,
                 Trace& trace)
        : m_settings(settings)
        , m_schedule(schedule)
        , m_registry(registry)
        , m_trace(trace) {}

    void CreateStream() override;
    void ReleaseStream() override;
    void PlayFile(const std::string& path) override;

private:
    using Callback = void (IAnnouncementAgent::*)();

    void AnswerAfter(std::optional<VirtualTime> delay, const char* operation, Callback callback);

    const HostSettings& m_settings;
    Schedule& m_schedule;
    const IInstanceManager& m_registry;
    Trace& m_trace;
};
