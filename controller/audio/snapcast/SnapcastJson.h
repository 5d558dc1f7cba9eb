#pragma once

#include <nlohmann/json.hpp>

#include <string>

namespace controller::audio {

/// What a server has sent; discarded where it is no JSON. What is nested deeper than servers do is left out:
/// to copy or write that would take more stack than a thread has.
inline nlohmann::json ReadSnapcastJson(const std::string& text) {
    constexpr int kMostDepth = 64;
    const auto isKept = [](int depth, nlohmann::json::parse_event_t /*event*/, nlohmann::json& /*parsed*/) {
        return depth < kMostDepth;
    };
    return nlohmann::json::parse(text, isKept, false);
}

/// A text of an object; empty where there is none, or something else.
inline std::string TextIn(const nlohmann::json& object, const char* name) {
    const auto text = object.find(name);
    return text != object.end() && text->is_string() ? text->get_ref<const std::string&>() : "";
}

} // namespace controller::audio
