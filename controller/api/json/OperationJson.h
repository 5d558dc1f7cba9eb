#pragma once

#include "controller/api/Operation.h"
#include "controller/api/json/List.h"

#include <string>
#include <vector>

namespace controller {

/// A value that stands in the address of an operation: in its "path" or its "query".
struct OperationParameter {
    std::string name;
    std::string in;
    std::string summary;
};

/// In the order of the path, then of the query.
[[nodiscard]] std::vector<OperationParameter> ParametersIn(const Operation& operation);

fields::Object TableOf(fields::For<OperationParameter> type);
fields::Object TableOf(fields::For<Operation> type);

namespace view {

template <>
inline constexpr ListWords kListWords<std::vector<Operation>>{"OperationList", "operations"};
using OperationList = List<std::vector<Operation>>;

} // namespace view

} // namespace controller
