#pragma once

#include "controller/ModuleFile.h"
#include "controller/agent/AgentHost.h"
#include "tests/controller/support/FakeScheduler.h"
#include "tests/controller/support/TestLog.h"

#include <string>

namespace controller {

/// The real module's agent on a virtual clock, in a host without devices.
struct TestAgent {
    TestAgent() {
        services.RegisterInterface(ITimerManager::kGuid, static_cast<ITimerManager*>(&timers), 1);
        DriverHost::Listeners listeners;
        listeners.handlerMissing = [this](const std::string& /*name*/) {
            agent.HandlerMissing();
        };
        host.SetListeners(listeners);
    }

    FakeScheduler scheduler;
    TestLog log;
    Timers timers{scheduler, log.log};
    DriverHost host{timers, log.log};
    InstanceRegistry services;
    AgentHost agent{FindModuleFile().string(), services, host, log.log};
};

} // namespace controller
