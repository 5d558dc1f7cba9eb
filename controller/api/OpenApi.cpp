#include "controller/api/OpenApi.h"

#include "controller/api/json/OperationJson.h"
#include "controller/api/json/Replies.h"
#include "controller/driver/Text.h"

#include <nlohmann/json.hpp>

#include <limits>
#include <string_view>

namespace controller {

using Json = nlohmann::ordered_json;

namespace {

Json Media(const char* type, Json schema) {
    return {{type, {{"schema", std::move(schema)}}}};
}

Json ContentOf(const Content& content, fields::Components& components) {
    Json schema;
    if (content.table != nullptr)
        content.table().Describe(schema, {}, components);
    else
        schema["type"] = std::string_view(content.type) == "application/json" ? "object" : "string";
    if (std::string_view(content.type) == Content::File().type)
        schema["format"] = "binary";
    return Media(content.type, std::move(schema));
}

Json IdSchema() {
    return {{"type", "integer"}, {"minimum", 1}, {"maximum", std::numeric_limits<std::uint32_t>::max()}};
}

Json ParametersOf(const Operation& operation) {
    Json parameters = Json::array();
    for (const OperationParameter& parameter : ParametersIn(operation)) {
        const bool isInPath = parameter.in == "path";
        const bool isId = isInPath && parameter.name != "name";
        parameters.push_back({{"name", parameter.name},
                              {"in", parameter.in},
                              {"required", isInPath},
                              {"description", parameter.summary},
                              {"schema", isId ? IdSchema() : Json{{"type", "string"}}}});
    }
    return parameters;
}

Json RepliesOf(const Operation& operation, fields::Components& components) {
    Json good{{"description", operation.summary}};
    if (operation.gives.type != nullptr)
        good["content"] = ContentOf(operation.gives, components);
    Json replies;
    replies[std::to_string(operation.status)] = good;
    // A file may be new or replace another one.
    if (operation.kind == Operation::Kind::File)
        replies["201"] = good;
    Json problem;
    fields::TypeOf<view::Problem>().Describe(problem, {}, components);
    replies["default"] = {{"description", "What is wrong, and what would be right"},
                          {"content", Media("application/problem+json", std::move(problem))}};
    return replies;
}

Json Describe(const Operation& operation, fields::Components& components) {
    Json described{{"operationId", operation.name}, {"summary", operation.summary}};
    Json parameters = ParametersOf(operation);
    if (!parameters.empty())
        described["parameters"] = std::move(parameters);
    described["responses"] = RepliesOf(operation, components);
    if (operation.need == Need::Nothing)
        described["security"] = Json::array();
    else
        described["description"] = std::string("Needs the right: ") + NameOf(operation.need);
    return described;
}

} // namespace

std::string DescribeAsOpenApi(const std::vector<Operation>& operations) {
    Json paths = Json::object();
    Json schemas = Json::object();
    fields::Components components{schemas};
    for (const Operation& operation : operations)
        paths[operation.path][Lower(operation.method)] = Describe(operation, components);
    // Bodies come second: those that are replies as well get names of their own.
    components.isTaken = true;
    for (const Operation& operation : operations) {
        if (operation.takes.type != nullptr)
            paths[operation.path][Lower(operation.method)]["requestBody"] = {
                {"required", true}, {"content", ContentOf(operation.takes, components)}};
    }
    const Json document{{"openapi", "3.1.0"},
                        {"info",
                         {{"title", "Announcement controller"},
                          {"version", API_VERSION},
                          {"description", "Announcements in the rooms and on the screens of a house"}}},
                        {"servers", Json::array({{{"url", "/"}}})},
                        {"security", Json::array({{{"token", Json::array()}}})},
                        {"paths", std::move(paths)},
                        {"components",
                         {{"securitySchemes",
                           {{"token",
                             {{"type", "http"},
                              {"scheme", "bearer"},
                              {"description", "Not needed while the house has none"}}}}},
                          {"schemas", std::move(schemas)}}}};
    return document.dump(1) + '\n';
}

} // namespace controller
