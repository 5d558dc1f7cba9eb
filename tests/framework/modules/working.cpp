#include "host/VqBaseDriver.h"

#include <stdexcept>

namespace {

/// Refuses to be made when the host publishes something under "refuse".
class ModelDriver final : public VqBaseDriver {
public:
    explicit ModelDriver(IInstanceManager& instances)
        : VqBaseDriver(instances, DriverMultiplicity::Multiple) {
        void* found = nullptr;
        instances.QueryInterface("refuse", &found);
        if (found != nullptr)
            throw std::runtime_error("refused");
    }

    [[nodiscard]] std::string GetModel() const override { return "from a module"; }
};

VqBaseDriver* Create(IInstanceManager& instances) {
    return new ModelDriver(instances);
}

} // namespace

extern "C" VQ_EXPORT DriverFactory GetCreationFunc() {
    return &Create;
}
