#include "controller/announcements/RawRequest.h"

#include "framework/XmlText.h"
#include "host/Conversion.h"
#include "host/VqXML.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace controller::raw_request {

namespace {

std::string Find(const Parameters& parameters, const std::string& name) {
    const auto place = std::find_if(parameters.begin(), parameters.end(),
                                    [&](const auto& parameter) { return parameter.first == name; });
    return place != parameters.end() ? place->second : "";
}

std::uint32_t IdInDescription(const std::string& xml) {
    const auto document = VqXML::CreateXmlDocument(xml);
    return document ? document->GetRootNode()->GetChildValueAsULong("id") : 0;
}

template <std::size_t Size>
bool IsOne(const std::array<std::string_view, Size>& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

} // namespace

Parameters WithoutOwnId(Parameters parameters) {
    for (auto& [name, value] : parameters) {
        const auto document = name == "announcement" ? VqXML::CreateXmlDocument(value) : nullptr;
        if (!document || document->GetRootNode()->GetChildValueAsULong("id") == 0)
            continue;
        document->GetRootNode()->FindChild("id")->SetNameAndValue("id", "0");
        value = ToXmlText(*document->GetRootNode());
    }
    return parameters;
}

Concern ConcernOf(const std::string& request, const Parameters& parameters, const AgentAnswer& answer) {
    static constexpr std::array<std::string_view, 2> kReading{"get_announcement", "get_announcements"};
    static constexpr std::array<std::string_view, 6> kById{
        "remove_announcement", "add_room", "modify_room", "remove_room", "add_navigator", "remove_navigator"};
    if (answer.kind == AgentAnswer::Kind::Unknown || answer.kind == AgentAnswer::Kind::NoAgent ||
        IsOne(kReading, request))
        return {};
    if (IsOne(kById, request))
        return {vq::ToULong(Find(parameters, "id")), false};
    if (request == "modify_announcement")
        return {IdInDescription(Find(parameters, "announcement")), false};
    if (request == kAdd && answer.tag == "success")
        return {vq::ToULong(answer.value), false};
    return {std::nullopt, true};
}

std::optional<std::uint32_t> Played(const std::string& command, const Parameters& parameters) {
    if (command != "execute_announcement")
        return std::nullopt;
    return vq::ToULong(Find(parameters, "id"));
}

} // namespace controller::raw_request
