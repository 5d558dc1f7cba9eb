#pragma once

#include "framework/InstanceRegistry.h"
#include "rehearsal/HostSettings.h"
#include "rehearsal/Reactions.h"
#include "rehearsal/Schedule.h"
#include "rehearsal/Trace.h"
#include "rehearsal/TracedAsserts.h"
#include "rehearsal/VirtualAudio.h"
#include "rehearsal/VirtualDevices.h"
#include "rehearsal/VirtualDriverHost.h"
#include "rehearsal/VirtualInstances.h"
#include "rehearsal/VirtualLogger.h"
#include "rehearsal/VirtualTimers.h"

#include <cstdint>

/// The host of a rehearsal: every service that the agent asks for, on a virtual clock, with each call traced.
/// Listens to the failed checks of its thread as long as it lives; drivers must be destroyed before it.
class VirtualHost {
public:
    /// `sink` is borrowed for life; `doStep` does what the host does from inside the agent's calls.
    VirtualHost(TraceSink& sink, bool showLookUps, Reactions::Doer doStep);
    VirtualHost(const VirtualHost&) = delete;
    VirtualHost& operator=(const VirtualHost&) = delete;

    /// The instance manager for drivers.
    [[nodiscard]] IInstanceManager& Instances() noexcept { return m_instances; }
    /// What is published there, untraced.
    [[nodiscard]] const IInstanceManager& Registry() const noexcept { return m_registry; }
    [[nodiscard]] Schedule& Time() noexcept { return m_schedule; }
    [[nodiscard]] const Schedule& Time() const noexcept { return m_schedule; }
    [[nodiscard]] Trace& Events() noexcept { return m_trace; }
    [[nodiscard]] HostSettings& Settings() noexcept { return m_settings; }
    /// What the host will do from inside the agent's calls.
    [[nodiscard]] Reactions& FromInside() noexcept { return m_reactions; }

private:
    HostSettings m_settings;
    Schedule m_schedule;
    Reactions m_reactions;
    Trace m_trace;
    InstanceRegistry m_registry;
    TracedAsserts m_asserts;
    VirtualTimers m_timers;
    VirtualDriverHost m_driverHost;
    VirtualAudio m_audio;
    VirtualDevices m_devices;
    VirtualLogger m_logger;
    VirtualInstances m_instances;
};
