#pragma once

#include "controller/announcements/Announcement.h"
#include "controller/api/json/Fields.h"
#include "host/INode.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <string>

namespace controller {

const fields::Object& TableOf(fields::For<Announcement> type);
const fields::Object& TableOf(fields::For<Announcement::Audio> type);
const fields::Object& TableOf(fields::For<Announcement::Binding> type);
const fields::Object& TableOf(fields::For<Announcement::Video> type);
const fields::Object& TableOf(fields::For<Announcement::Room> type);
const fields::Object& TableOf(fields::For<Announcement::Navigator> type);

} // namespace controller

/// Announcements as the API shows them, and as the agent reads and writes them.
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
void Append(std::string& out, const Announcement& announcement);

/// Reads a body. An "id" in it has to be this one, which is the result's. Throws `ApiError`, which names the
/// member, for what is no announcement; `path` is how messages name the whole.
[[nodiscard]] Announcement Read(const nlohmann::json& json, std::uint32_t id, const std::string& path = {});

/// What an announcement has for one room, and for one navigator; the body holds all but the id.
[[nodiscard]] Announcement::Room ReadRoom(const nlohmann::json& json, std::uint32_t id);
[[nodiscard]] Announcement::Navigator ReadNavigator(const nlohmann::json& json, std::uint32_t id);

/// Those bodies.
[[nodiscard]] const fields::Object& RoomVolumeTable();
[[nodiscard]] const fields::Object& NavigatorPlaceTable();

/// The "announcement" element as JSON.
[[nodiscard]] nlohmann::ordered_json FromXml(VqXML::INode& announcement);

/// Every announcement of an "announcements" element, as `{"announcements": [...]}`. Any thread. Throws
/// `std::runtime_error` when the text is not XML.
[[nodiscard]] std::string ListFromXml(const std::string& xml);

/// The JSON as the text of an "announcement" element with this id (0: without one). Throws `ApiError`, which
/// names the member, for what is no announcement; `path` is how messages name the whole.
[[nodiscard]] std::string
ToXml(const nlohmann::json& announcement, std::uint32_t id, const std::string& path = {});

/// A "room" element's text.
[[nodiscard]] std::string RoomXml(std::uint32_t id, std::int32_t volume);

/// A "navigator" element's text.
[[nodiscard]] std::string NavigatorXml(std::uint32_t id, std::uint32_t room, bool isOnscreen);

/// Reads the volume that an announcement has for a room, from the member "volume".
[[nodiscard]] std::int32_t ReadVolume(const nlohmann::json& room, const std::string& path);

} // namespace controller::announcement_json
