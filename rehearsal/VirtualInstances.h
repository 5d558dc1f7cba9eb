#pragma once

#include "host/IInstanceManager.h"
#include "rehearsal/Trace.h"

#include <cstdint>
#include <string>

struct HostSettings;

/// The instance manager that the agent is given: the registry's content, with the services that the settings
/// switch off left out. Look-ups and publications are traced here; the host itself uses the registry.
class VirtualInstances final : public IInstanceManager {
public:
    VirtualInstances(const HostSettings& settings, IInstanceManager& registry, Trace& trace)
        : m_settings(settings)
        , m_registry(registry)
        , m_trace(trace) {}

    void QueryInterface(const std::string& guid, void** out) const override;
    void RegisterInterface(const std::string& guid, void* object, std::uint32_t version) override;
    void UnregisterInterface(const std::string& guid) override;

private:
    [[nodiscard]] bool IsSwitchedOff(const std::string& guid) const;

    const HostSettings& m_settings;
    IInstanceManager& m_registry;
    Trace& m_trace;
};
