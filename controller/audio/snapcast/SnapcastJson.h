#pragma once

#include <nlohmann/json.hpp>

#include <string>

namespace controller::audio {

/// A text of an object; empty where there is none, or something else.
inline std::string TextIn(const nlohmann::json& object, const char* name) {
    const auto text = object.find(name);
    return text != object.end() && text->is_string() ? text->get_ref<const std::string&>() : "";
}

} // namespace controller::audio
