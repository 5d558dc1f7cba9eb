#pragma once

#include "controller/announcements/Announcement.h"
#include "controller/api/json/Fields.h"

#include <cstdint>
#include <string>

namespace controller {

fields::Object TableOf(fields::For<Announcement> type);
fields::Object TableOf(fields::For<Announcement::Audio> type);
fields::Object TableOf(fields::For<Announcement::Binding> type);
fields::Object TableOf(fields::For<Announcement::Video> type);
fields::Object TableOf(fields::For<Announcement::Room> type);
fields::Object TableOf(fields::For<Announcement::Navigator> type);

} // namespace controller

/// Announcements as the API shows and takes them.
namespace controller::announcement_json {

/// The longest text of an announcement, in bytes.
constexpr std::size_t kMaxText = 16384;
/// The most rooms, and the most navigators, of an announcement.
constexpr std::size_t kMaxTargets = 1000;
/// The most tags of an announcement, and the longest one in bytes.
constexpr std::size_t kMaxTags = 20;
constexpr std::size_t kMaxTag = 50;

/// The announcement as the API shows it; any thread.
[[nodiscard]] std::string ToText(const Announcement& announcement);

/// Reads a body. An "id" in it has to be this one, which is the result's. Throws `ApiError`, which names the
/// member, for what is no announcement; `path` is how messages name the whole.
[[nodiscard]] Announcement Read(const nlohmann::json& json, std::uint32_t id, const std::string& path = {});

/// What an announcement has for one room, and for one navigator; the body holds all but the id.
[[nodiscard]] Announcement::Room ReadRoom(const nlohmann::json& json, std::uint32_t id);
[[nodiscard]] Announcement::Navigator ReadNavigator(const nlohmann::json& json, std::uint32_t id);

/// Those bodies.
struct RoomVolume {
    Announcement::Room room;

    static fields::Object Table();
};
struct NavigatorPlace {
    Announcement::Navigator navigator;

    static fields::Object Table();
};

} // namespace controller::announcement_json
