#pragma once

#include "host/INode.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <string>

/// Announcements as the API shows them, and as the agent reads and writes them.
namespace controller::announcement_json {

/// The longest text of an announcement, in bytes.
constexpr std::size_t kMaxText = 16384;
/// The most rooms, and the most navigators, of an announcement.
constexpr std::size_t kMaxTargets = 1000;

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
