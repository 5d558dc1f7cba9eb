#pragma once

#include "host/ICmdMessage.h"
#include "host/auto_com.h"

#include <string>

/// What the base driver hands out to the objects of a driver.
class IDriverHelper {
public:
    /// A new outgoing command message of that name, without parameters.
    [[nodiscard]] virtual vq::auto_com<ICmdMessage> CreateCmdMessage(const std::string& name) const = 0;

protected:
    ~IDriverHelper() = default;
};
