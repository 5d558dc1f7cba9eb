#include "controller/api/json/OperationJson.h"

#include <string_view>

namespace controller {

using fields::Made;
using fields::Member;

namespace {

template <const char* Operation::*Text>
std::string TextOf(const Operation& operation) {
    return operation.*Text;
}

std::string RightOf(const Operation& operation) {
    return NameOf(operation.need);
}

} // namespace

std::vector<OperationParameter> ParametersIn(const Operation& operation) {
    std::vector<OperationParameter> parameters;
    const std::string_view path = operation.path;
    for (std::size_t open = path.find('{'); open != std::string_view::npos; open = path.find('{', open + 1)) {
        const std::string name(path.substr(open + 1, path.find('}', open) - open - 1));
        parameters.push_back({name, "path", "the " + name + " that is meant"});
    }
    for (const Operation::QueryValue& value : operation.query)
        parameters.push_back({value.name, "query", value.summary});
    return parameters;
}

fields::Object TableOf(fields::For<OperationParameter> /*type*/) {
    return {"OperationParameter",
            {Member<&OperationParameter::name>("name"),
             Member<&OperationParameter::in>("in").OneOf({"path", "query"}),
             Member<&OperationParameter::summary>("summary")}};
}

fields::Object TableOf(fields::For<Operation> /*type*/) {
    return {"Operation",
            {Made<&TextOf<&Operation::name>>("name"), Made<&TextOf<&Operation::method>>("method"),
             Made<&TextOf<&Operation::path>>("path"), Made<&RightOf>("right"),
             Made<&TextOf<&Operation::summary>>("summary"), Made<&ParametersIn>("parameters")}};
}

} // namespace controller
