#pragma once

#include "host/IDriverHelper.h"

#include <cstdint>

/// The helper as announcements need it, which report a change of their own under the driver's device id;
/// rooms and navigators only make messages.
class IDriverHelperV2 : public IDriverHelper {
public:
    /// The id of the driver's own device.
    [[nodiscard]] virtual std::uint32_t GetDeviceId() const = 0;

protected:
    ~IDriverHelperV2() = default;
};
