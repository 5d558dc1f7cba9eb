#include "host/VqBaseAgentDriver.h"

class Greeter final : public VqBaseAgentDriver {
public:
    explicit Greeter(IInstanceManager& instances)
        : VqBaseAgentDriver(instances, DriverMultiplicity::Single) {}
    void RegisterCommands() override {
        GetCmdDispatcher().RegisterCmd0("greet", [this] { LogMessage(Information, "hello"); });
    }
};

extern "C" VQ_EXPORT DriverFactory GetCreationFunc() {
    return [](IInstanceManager& instances) -> VqBaseDriver* {
        return new Greeter(instances);
    };
}
