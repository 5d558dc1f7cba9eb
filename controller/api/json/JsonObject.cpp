#include "controller/api/json/JsonObject.h"

#include "controller/api/ApiError.h"

namespace controller {

using nlohmann::json;

namespace {

constexpr int kMaxDepth = 32;

/// Throws when the text nests too deep; says nothing about the rest, which the parser does.
void CheckDepth(const std::string& text) {
    int depth = 0;
    bool isText = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char letter = text[i];
        if (isText && letter == '\\')
            ++i;
        else if (letter == '"')
            isText = !isText;
        else if (!isText && (letter == '{' || letter == '[') && ++depth > kMaxDepth)
            throw ApiError(400, "the body nests too deep",
                           "at most " + std::to_string(kMaxDepth) + " levels");
        else if (!isText && (letter == '}' || letter == ']'))
            --depth;
    }
}

std::string Quoted(const json& value) {
    std::string text = value.dump(-1, ' ', false, json::error_handler_t::replace);
    if (text.size() > 60)
        text = text.substr(0, 57) + "...";
    return text;
}

} // namespace

json ParseJson(const std::string& text) {
    CheckDepth(text);
    try {
        return json::parse(text);
    } catch (const json::parse_error& error) {
        throw ApiError(400, "the body is no JSON, at byte " + std::to_string(error.byte),
                       "a JSON object in UTF-8");
    } catch (const json::out_of_range& error) {
        // The only thing that a parser finds out of range; its message ends with the number, in quotes.
        const std::string message = error.what();
        throw ApiError(400,
                       "the body holds a number that is too large: " + message.substr(message.find('\'')),
                       "at most 1.7e308");
    }
}

JsonObject::JsonObject(const json& value, std::string path) : m_value(value), m_path(std::move(path)) {
    if (!value.is_object())
        throw ApiError(400, (m_path.empty() ? "the body" : m_path) + " is no object", "a JSON object");
}

std::string JsonObject::PathOf(const std::string& name) const {
    return m_path.empty() ? name : m_path + "." + name;
}

const json* JsonObject::Find(const char* name) {
    m_read.insert(name);
    const auto place = m_value.find(name);
    return place != m_value.end() && !place->is_null() ? &*place : nullptr;
}

bool JsonObject::Has(const char* name) {
    return Find(name) != nullptr;
}

const json& JsonObject::Required(const char* name) {
    const json* const found = Find(name);
    if (found == nullptr)
        throw ApiError(400, PathOf(name) + " is missing");
    return *found;
}

std::string JsonObject::Text(const char* name, std::size_t maxBytes) {
    const json& value = Required(name);
    if (!value.is_string())
        throw ApiError(400, PathOf(name) + ": " + Quoted(value) + " is no text", "a text");
    auto text = value.get<std::string>();
    if (text.size() > maxBytes)
        throw ApiError(400, PathOf(name) + " is too long: " + std::to_string(text.size()) + " bytes",
                       "at most " + std::to_string(maxBytes) + " bytes");
    return text;
}

std::string JsonObject::Text(const char* name, std::size_t maxBytes, const std::string& missing) {
    return Has(name) ? Text(name, maxBytes) : missing;
}

std::int64_t JsonObject::Integer(const char* name, std::int64_t least, std::int64_t most) {
    const json& value = Required(name);
    const std::string right = "an integer from " + std::to_string(least) + " to " + std::to_string(most);
    if (!value.is_number_integer())
        throw ApiError(400, PathOf(name) + ": " + Quoted(value) + " is no integer", right);
    const bool isHuge = value.is_number_unsigned() &&
                        value.get<std::uint64_t>() > std::uint64_t{std::numeric_limits<std::int64_t>::max()};
    if (isHuge || value.get<std::int64_t>() < least || value.get<std::int64_t>() > most)
        throw ApiError(400, PathOf(name) + ": " + Quoted(value) + " is out of range", right);
    return value.get<std::int64_t>();
}

std::int64_t
JsonObject::Integer(const char* name, std::int64_t least, std::int64_t most, std::int64_t missing) {
    return Has(name) ? Integer(name, least, most) : missing;
}

std::uint32_t JsonObject::Id(const char* name) {
    return static_cast<std::uint32_t>(Integer(name, 1, std::numeric_limits<std::uint32_t>::max()));
}

std::uint32_t JsonObject::Number(const char* name, std::uint32_t missing) {
    return static_cast<std::uint32_t>(Integer(name, 0, std::numeric_limits<std::uint32_t>::max(), missing));
}

bool JsonObject::Bool(const char* name, bool missing) {
    const json* const value = Find(name);
    if (value == nullptr)
        return missing;
    if (!value->is_boolean())
        throw ApiError(400, PathOf(name) + ": " + Quoted(*value) + " is no truth value", "true or false");
    return value->get<bool>();
}

void JsonObject::RefuseOthers() const {
    std::string known;
    for (const std::string& name : m_read)
        known += (known.empty() ? "" : ", ") + name;
    for (const auto& [name, value] : m_value.items()) {
        if (m_read.count(name) == 0)
            throw ApiError(400, "unknown member " + PathOf(name),
                           known.empty() ? "an empty object" : "only " + known);
    }
}

} // namespace controller
