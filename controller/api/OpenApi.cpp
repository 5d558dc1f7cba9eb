#include "controller/api/OpenApi.h"

#include "controller/api/OpenApiSchemas.h"
#include "controller/api/OperationParameters.h"

#include <nlohmann/json.hpp>

namespace controller {

using Json = nlohmann::ordered_json;

namespace {

Json SchemaOf(const std::string& name) {
    return {{"$ref", "#/components/schemas/" + name}};
}

Json Content(const char* type, Json schema) {
    return {{type, {{"schema", std::move(schema)}}}};
}

Json Text(bool isBinary) {
    return isBinary ? Json{{"type", "string"}, {"format", "binary"}} : Json{{"type", "string"}};
}

Json ContentOf(const std::string& schema) {
    if (schema == "file")
        return Content("application/octet-stream", Text(true));
    if (schema == "xml")
        return Content("application/xml", Text(false));
    if (schema == "text")
        return Content("text/plain", Text(false));
    return Content("application/json", SchemaOf(schema));
}

Json ParametersOf(const Operation& operation) {
    Json parameters = Json::array();
    for (const OperationParameter& parameter : ParametersIn(operation)) {
        const bool isId = parameter.isInPath && parameter.name != "name";
        parameters.push_back({{"name", parameter.name},
                              {"in", parameter.isInPath ? "path" : "query"},
                              {"required", parameter.isInPath},
                              {"description", parameter.summary},
                              {"schema", isId ? SchemaOf("Id") : Json{{"type", "string"}}}});
    }
    return parameters;
}

Json RepliesOf(const Operation& operation) {
    Json good{{"description", operation.summary}};
    if (operation.gives != nullptr)
        good["content"] = ContentOf(operation.gives);
    Json replies;
    replies[std::to_string(operation.status)] = good;
    // A file may be new or replace another one.
    if (operation.kind == Operation::Kind::File)
        replies["201"] = good;
    replies["default"] = {{"description", "What is wrong, and what would be right"},
                          {"content", Content("application/problem+json", SchemaOf("Problem"))}};
    return replies;
}

Json Describe(const Operation& operation) {
    Json described{{"operationId", operation.name}, {"summary", operation.summary}};
    Json parameters = ParametersOf(operation);
    if (!parameters.empty())
        described["parameters"] = std::move(parameters);
    if (operation.takes != nullptr)
        described["requestBody"] = {{"required", true}, {"content", ContentOf(operation.takes)}};
    described["responses"] = RepliesOf(operation);
    if (operation.need == Need::Nothing)
        described["security"] = Json::array();
    else
        described["description"] = std::string("Needs the right: ") + NameOf(operation.need);
    return described;
}

std::string Lower(std::string text) {
    for (char& letter : text)
        letter = static_cast<char>(letter - 'A' + 'a');
    return text;
}

} // namespace

std::string DescribeAsOpenApi(const std::vector<Operation>& operations) {
    Json paths = Json::object();
    for (const Operation& operation : operations)
        paths[operation.path][Lower(operation.method)] = Describe(operation);
    Json document{{"openapi", "3.0.3"},
                  {"info",
                   {{"title", "Announcement controller"},
                    {"version", API_VERSION},
                    {"description", "Announcements in the rooms and on the screens of a house"}}},
                  {"servers", Json::array({{{"url", "/"}}})},
                  {"security", Json::array({{{"token", Json::array()}}})},
                  {"paths", std::move(paths)}};
    document["components"] = {{"securitySchemes",
                               {{"token",
                                 {{"type", "http"},
                                  {"scheme", "bearer"},
                                  {"description", "Not needed while the house has none"}}}}},
                              {"schemas", Json::parse(OpenApiSchemas())}};
    return document.dump(1);
}

} // namespace controller
