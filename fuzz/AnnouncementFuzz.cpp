#include "controller/announcements/AnnouncementXml.h"
#include "controller/api/ApiError.h"
#include "controller/api/json/AnnouncementJson.h"
#include "controller/api/json/HouseViews.h"
#include "controller/api/json/ParseJson.h"
#include "fuzz/Require.h"
#include "host/VqXML.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <cstdint>
#include <string>

namespace controller {

namespace {

constexpr std::uint32_t kId = 1;

/// What a client gets can be sent back as it is, and changes nothing.
void CheckRoundTrip(const Announcement& announcement) {
    const std::string xml = announcement_xml::ToXml(announcement);
    const auto document = VqXML::CreateXmlDocument(xml);
    Require(static_cast<bool>(document), "what is handed to the agent is XML");
    Announcement kept = announcement_xml::FromXml(*document->GetRootNode());
    kept.house = announcement_xml::HouseFromXml(announcement_xml::ToXml(announcement.house));
    Require(kept.house.tags == announcement.house.tags && kept.house.isUrgent == announcement.house.isUrgent,
            "what the house adds is kept as it is");
    const std::string json = announcement_json::ToText(kept);
    const Announcement again = announcement_json::Read(ParseJson(json), kId);
    Require(announcement_xml::ToXml(again) == announcement_xml::ToXml(kept),
            "an announcement that is sent back is the same for the agent");
    Require(announcement_json::ToText(again) == json,
            "an announcement that is sent back is the same for clients");
    const auto list = ParseJson(
        fields::ToText(view::AnnouncementList{std::make_shared<const std::vector<AnnouncementPointer>>(
            1, std::make_shared<const Announcement>(kept))}));
    Require(list["announcements"] == nlohmann::json::array({nlohmann::json::parse(json)}),
            "an announcement in the list is the announcement itself");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    try {
        CheckRoundTrip(announcement_json::Read(ParseJson(text), kId));
    } catch (const ApiError& error) {
        Require(error.Status() == 400, "a body that is no announcement is the client's mistake");
        Require(*error.what() != '\0', "a refusal says what is wrong");
    }
    return 0;
}

} // namespace controller
