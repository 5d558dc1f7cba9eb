#pragma once

#include "controller/ModuleFile.h"
#include "controller/agent/AgentHost.h"
#include "tests/controller/support/FakeScheduler.h"
#include "tests/controller/support/TestLog.h"

#include <cstdint>
#include <functional>
#include <string>

namespace controller {

/// The real module's agent on a virtual clock, in a host without devices.
struct TestAgent {
    TestAgent() {
        services.RegisterInterface(ITimerManager::kGuid, static_cast<ITimerManager*>(&timers), 1);
        DriverHost::Listeners listeners;
        listeners.eventFired = [this](std::uint32_t id) {
            if (fired)
                fired(id);
        };
        listeners.handlerMissing = [this](const std::string& /*name*/) {
            agent.HandlerMissing();
        };
        host.SetListeners(listeners);
    }

    std::function<void(std::uint32_t id)> fired; ///< told what begins to play
    FakeScheduler scheduler;
    TestLog log;
    Timers timers{scheduler, log.log};
    DriverHost host{timers, log.log};
    InstanceRegistry services;
    AgentHost agent{FindModuleFile().string(), services, host, log.log};
};

} // namespace controller
