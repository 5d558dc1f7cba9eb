#include "rehearsal/VirtualHost.h"

#include <utility>

VirtualHost::VirtualHost(TraceSink& sink, bool showLookUps, Reactions::Doer doStep)
    : m_reactions(std::move(doStep))
    , m_trace(m_schedule, m_reactions, sink, showLookUps)
    , m_asserts(m_trace)
    , m_timers(m_schedule, m_trace)
    , m_driverHost(m_settings, m_timers, m_trace)
    , m_audio(m_settings, m_schedule, m_registry, m_trace)
    , m_devices(m_settings, m_trace)
    , m_logger(m_trace)
    , m_instances(m_settings, m_registry, m_trace) {
    m_registry.RegisterInterface(IDriverHost::kGuid, static_cast<IDriverHost*>(&m_driverHost), 1);
    m_registry.RegisterInterface(IDigitalAudio::kGuid, static_cast<IDigitalAudio*>(&m_audio), 1);
    m_registry.RegisterInterface(IDeviceManager::kGuid, static_cast<IDeviceManager*>(&m_devices), 1);
    m_registry.RegisterInterface(ILogger::kGuid, static_cast<ILogger*>(&m_logger), 1);
    m_registry.RegisterInterface(ITimerManager::kGuid, static_cast<ITimerManager*>(&m_timers), 1);
}
