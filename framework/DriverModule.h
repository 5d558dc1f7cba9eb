#pragma once

#include "host/Export.h"
#include "host/VqBaseDriver.h"

#include <memory>
#include <string>

/// A driver module, loaded by file for as long as this object lives. Drivers made by it must be destroyed
/// before it.
class VQ_EXPORT DriverModule {
public:
    /// Loads the module and takes the factory from its `GetCreationFunc`. Throws `std::runtime_error`, which
    /// says what and where, when the file is missing, is no module, or has no such entry.
    explicit DriverModule(const std::string& file);

    /// Creates a driver. What its constructor throws reaches the caller.
    [[nodiscard]] std::unique_ptr<VqBaseDriver> Create(IInstanceManager& instances) const;

private:
    struct Unload {
        void operator()(void* handle) const noexcept;
    };

    std::unique_ptr<void, Unload> m_handle;
    DriverFactory m_factory;
};
