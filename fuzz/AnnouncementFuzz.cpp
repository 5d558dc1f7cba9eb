#include "controller/api/ApiError.h"
#include "controller/api/json/AnnouncementJson.h"
#include "controller/api/json/JsonObject.h"
#include "fuzz/Require.h"
#include "host/VqXML.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace controller {

namespace {

constexpr std::uint32_t kId = 1;

/// As the body of a reply holds it.
std::string JsonOf(const std::string& xml) {
    const auto document = VqXML::CreateXmlDocument(xml);
    Require(static_cast<bool>(document), "what is handed to the agent is XML");
    return announcement_json::FromXml(*document->GetRootNode()).dump();
}

/// What a client gets can be sent back as it is, and changes nothing.
void CheckRoundTrip(const std::string& xml) {
    const std::string json = JsonOf(xml);
    const std::string again = announcement_json::ToXml(ParseJson(json), kId);
    Require(again == xml, "an announcement that is sent back is the same for the agent");
    Require(JsonOf(again) == json, "an announcement that is sent back is the same for clients");
    const auto list = ParseJson(announcement_json::ListFromXml("<announcements>" + xml + "</announcements>"));
    Require(list["announcements"] == nlohmann::json::array({nlohmann::json::parse(json)}),
            "an announcement in the list is the announcement itself");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    std::string xml;
    try {
        xml = announcement_json::ToXml(ParseJson(text), kId);
    } catch (const ApiError& error) {
        Require(error.Status() == 400, "a body that is no announcement is the client's mistake");
        Require(*error.what() != '\0', "a refusal says what is wrong");
        return 0;
    }
    CheckRoundTrip(xml);
    return 0;
}

} // namespace controller
