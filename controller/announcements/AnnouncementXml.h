#pragma once

#include "controller/announcements/Announcement.h"
#include "host/INode.h"

#include <string>
#include <vector>

/// An announcement as the agent's XML has it, both ways; and what the house adds to it.
namespace controller::announcement_xml {

/// The "announcement" element, read as the agent reads it. The house's part and the tag are left empty.
[[nodiscard]] Announcement FromXml(VqXML::INode& element);

/// The element's text: to the byte what the agent's own element for this announcement is written as.
[[nodiscard]] std::string ToXml(const Announcement& announcement);
[[nodiscard]] std::string ToXml(const Announcement::Room& room);
[[nodiscard]] std::string ToXml(const Announcement::Navigator& navigator);

/// All of them, as the agent answers "get_announcements".
[[nodiscard]] std::string ToXml(const std::vector<AnnouncementPointer>& announcements);

/// The "house" element's text, and what is in it. An addition that adds nothing has no text.
[[nodiscard]] HouseAddition HouseFromXml(const std::string& text);
[[nodiscard]] std::string ToXml(const HouseAddition& addition);

} // namespace controller::announcement_xml
