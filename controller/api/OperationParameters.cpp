#include "controller/api/OperationParameters.h"

#include <string_view>

namespace controller {

std::vector<OperationParameter> ParametersIn(const Operation& operation) {
    std::vector<OperationParameter> parameters;
    std::string_view path = operation.path;
    while (true) {
        const std::size_t open = path.find('{');
        if (open == std::string_view::npos)
            break;
        const std::size_t close = path.find('}', open);
        const std::string name(path.substr(open + 1, close - open - 1));
        parameters.push_back({name, "the " + name + " that is meant", true});
        path.remove_prefix(close + 1);
    }
    for (const Operation::QueryValue& value : operation.query)
        parameters.push_back({value.name, value.summary, false});
    return parameters;
}

} // namespace controller
