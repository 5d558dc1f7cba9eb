#pragma once

#include "controller/state/WriteDone.h"

#include <cstdint>
#include <string>

namespace controller {

/// Where values of variables are kept. Driver thread only.
class IVariableStore {
public:
    virtual void
    WriteVariable(std::uint32_t device, std::uint32_t variable, const std::string& value, WriteDone done) = 0;

protected:
    ~IVariableStore() = default;
};

} // namespace controller
