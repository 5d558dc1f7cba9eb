#include "controller/api/json/ParseJson.h"

#include "controller/api/ApiError.h"

#include <nlohmann/json.hpp>

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

} // namespace controller
