#pragma once

#include "controller/api/Operation.h"

#include <string>
#include <vector>

namespace controller {

/// A value that stands in the address of an operation.
struct OperationParameter {
    std::string name;
    std::string summary;
    bool isInPath = true; ///< or in the query
};

/// In the order of the path, then of the query.
[[nodiscard]] std::vector<OperationParameter> ParametersIn(const Operation& operation);

} // namespace controller
