#pragma once

#include "host/IDriverHelper.h"

#include <cstdint>

/// The helper, as later hosts offer it.
class IDriverHelperV2 : public IDriverHelper {
public:
    /// The id of the driver's own device.
    [[nodiscard]] virtual std::uint32_t GetDeviceId() const = 0;

protected:
    ~IDriverHelperV2() = default;
};
