#pragma once

#include "controller/api/Operation.h"

#include <string>
#include <vector>

namespace controller {

/// The operations as an OpenAPI 3.1 document, as JSON text.
[[nodiscard]] std::string DescribeAsOpenApi(const std::vector<Operation>& operations);

} // namespace controller
