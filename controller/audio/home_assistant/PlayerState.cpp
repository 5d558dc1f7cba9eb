#include "controller/audio/home_assistant/PlayerState.h"

#include <nlohmann/json.hpp>

namespace controller::audio {

namespace {

/// The players that an attribute lists.
std::size_t CountOfPlayers(const nlohmann::json& attributes, const char* name) {
    const auto list = attributes.find(name);
    return list != attributes.end() && list->is_array() ? list->size() : 0;
}

/// A group of Home Assistant's own lists its players as entity_id; loudspeakers that play together list
/// themselves and the others as group_members.
bool IsGroup(const nlohmann::json& attributes) {
    return CountOfPlayers(attributes, "entity_id") > 0 || CountOfPlayers(attributes, "group_members") > 1;
}

} // namespace

std::string WhyUnusable(const HomeAssistantRoom& room, const std::string& state) {
    const auto document = nlohmann::json::parse(state, nullptr, false);
    const bool isState = document.is_object() && document.contains("state") && document["state"].is_string();
    if (!isState)
        return room.server.Name() + " answers as Home Assistant does not";
    if (document["state"] == "unavailable")
        return room.player + " is unavailable at " + room.server.Name();
    const auto attributes = document.find("attributes");
    if (attributes != document.end() && attributes->is_object() && IsGroup(*attributes))
        return room.player +
               " is a group of players, which would not go on with its music afterwards; name a single one";
    return {};
}

} // namespace controller::audio
