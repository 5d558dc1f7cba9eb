#include "controller/api/json/AnnouncementJson.h"

#include "controller/api/ApiError.h"
#include "controller/api/json/JsonObject.h"
#include "framework/XmlText.h"
#include "host/VqXML.h"
#include "host/XmlHelper.h"

#include <stdexcept>

namespace controller {

using nlohmann::json;
using nlohmann::ordered_json;

namespace announcement_json {
namespace {

using NodePointer = vq::auto_com<VqXML::INode>;

template <class Make>
ordered_json ListOf(VqXML::INode* list, const Make& make) {
    ordered_json items = ordered_json::array();
    if (list == nullptr)
        return items;
    auto children = list->GetChildren();
    for (auto* child = children->First(); child != nullptr; child = children->Next())
        items.push_back(make(*child));
    return items;
}

void Add(ordered_json::object_t& /*members*/) {}

template <class Value, class... Others>
void Add(ordered_json::object_t& members, const char* name, Value&& value, Others&&... others) {
    members.emplace_back(name, std::forward<Value>(value));
    Add(members, std::forward<Others>(others)...);
}

/// The object of these names and values, in turn. An initializer list would make a list of each pair first;
/// this is what reading an announcement spends its time on.
template <class... NamesAndValues>
ordered_json ObjectOf(NamesAndValues&&... namesAndValues) {
    ordered_json object = ordered_json::object();
    auto& members = object.get_ref<ordered_json::object_t&>();
    members.reserve(sizeof...(namesAndValues) / 2);
    Add(members, std::forward<NamesAndValues>(namesAndValues)...);
    return object;
}

ordered_json AudioFromXml(VqXML::INode* audio) {
    if (audio == nullptr)
        return ObjectOf("file", "", "delay_ms", 0);
    return ObjectOf("file", audio->GetChildValue("file"), "delay_ms", audio->GetChildValueAsULong("delay"));
}

ordered_json VideoFromXml(VqXML::INode* video) {
    if (video == nullptr)
        return ObjectOf("image", "", "text", "", "delay_ms", 0, "timeout_ms", 0, "ok_button", true,
                        "variable", nullptr);
    const auto device = video->GetChildValueAsULong("displayID");
    const auto variable = video->GetChildValueAsULong("variableID");
    const std::string name = video->GetChildValue("variableName");
    ordered_json binding;
    if (device != 0 || variable != 0 || !name.empty())
        binding = ObjectOf("device", device, "variable", variable, "name", name);
    return ObjectOf("image", video->GetChildValue("file"), "text", video->GetChildValue("text"), "delay_ms",
                    video->GetChildValueAsULong("delay"), "timeout_ms",
                    video->GetChildValueAsULong("timeout"), "ok_button",
                    video->GetChildValueAsBool("OKButton"), "variable", std::move(binding));
}

ordered_json RoomFromXml(VqXML::INode& room) {
    return ObjectOf("id", room.GetChildValueAsULong("id"), "volume", room.GetChildValueAsLong("volume"));
}

ordered_json NavigatorFromXml(VqXML::INode& navigator) {
    return ObjectOf("id", navigator.GetChildValueAsULong("id"), "room",
                    navigator.GetChildValueAsULong("room_id"), "onscreen",
                    navigator.GetChildValueAsBool("onscreen"));
}

void AudioToXml(const json* value, const std::string& path, VqXML::INode& announcement) {
    static const json kNothing = json::object();
    JsonObject audio(value != nullptr ? *value : kNothing, path);
    const auto node = VqXML::CreateXmlNode("audio", "");
    node->AddChildString("file", audio.Text("file", kMaxText, ""));
    node->AddChildULong("delay", audio.Number("delay_ms", 0));
    audio.RefuseOthers();
    announcement.AppendChild(node.Get());
}

void BindingToXml(const json* value, const std::string& path, VqXML::INode& video) {
    std::uint32_t device = 0;
    std::uint32_t variable = 0;
    std::string name;
    if (value != nullptr) {
        JsonObject binding(*value, path);
        device = binding.Id("device");
        variable = binding.Id("variable");
        name = binding.Text("name", kMaxText, "");
        binding.RefuseOthers();
    }
    video.AddChildULong("displayID", device);
    video.AddChildULong("variableID", variable);
    video.AddChildString("variableName", name);
}

void VideoToXml(const json* value, const std::string& path, VqXML::INode& announcement) {
    static const json kNothing = json::object();
    JsonObject video(value != nullptr ? *value : kNothing, path);
    const auto node = VqXML::CreateXmlNode("video", "");
    node->AddChildString("file", video.Text("image", kMaxText, ""));
    node->AddChildString("text", video.Text("text", kMaxText, ""));
    node->AddChildULong("delay", video.Number("delay_ms", 0));
    node->AddChildULong("timeout", video.Number("timeout_ms", 0));
    BindingToXml(video.Find("variable"), video.PathOf("variable"), *node);
    node->AddChildBool("OKButton", video.Bool("ok_button", true));
    video.RefuseOthers();
    announcement.AppendChild(node.Get());
}

NodePointer RoomNode(std::uint32_t id, std::int32_t volume) {
    auto node = VqXML::CreateXmlNode("room", "");
    node->AddChildULong("id", id);
    node->AddChildLong("volume", volume);
    return node;
}

NodePointer NavigatorNode(std::uint32_t id, std::uint32_t room, bool isOnscreen) {
    auto node = VqXML::CreateXmlNode("navigator", "");
    node->AddChildULong("id", id);
    node->AddChildULong("room_id", room);
    node->AddChildBool("onscreen", isOnscreen);
    return node;
}

NodePointer RoomToXml(const json& value, const std::string& path) {
    JsonObject room(value, path);
    const std::uint32_t id = room.Id("id");
    (void)room.Find("volume"); // read by the next line
    auto node = RoomNode(id, ReadVolume(value, path));
    room.RefuseOthers();
    return node;
}

NodePointer NavigatorToXml(const json& value, const std::string& path) {
    JsonObject navigator(value, path);
    const std::uint32_t id = navigator.Id("id");
    const std::uint32_t room = navigator.Number("room", 0);
    const bool isOnscreen = navigator.Bool("onscreen", true);
    navigator.RefuseOthers();
    return NavigatorNode(id, room, isOnscreen);
}

/// The agent keeps the first of two targets with one id; here the second one is a mistake.
template <class Make>
void ListToXml(const json* value, const std::string& path, VqXML::INode& list, const Make& make) {
    if (value == nullptr)
        return;
    if (!value->is_array())
        throw ApiError(400, path + " is no list", "a list of objects");
    if (value->size() > kMaxTargets)
        throw ApiError(400, path + " is too long", "at most " + std::to_string(kMaxTargets) + " entries");
    std::set<std::uint32_t> ids;
    for (std::size_t i = 0; i < value->size(); ++i) {
        const std::string place = path + "[" + std::to_string(i) + "]";
        const NodePointer node = make((*value)[i], place);
        if (!ids.insert(node->GetChildValueAsULong("id")).second)
            throw ApiError(400, place + ".id stands in the list already", "each id once");
        list.AppendChild(node.Get());
    }
}

} // namespace

ordered_json FromXml(VqXML::INode& announcement) {
    return ObjectOf("id", announcement.GetChildValueAsULong("id"), "name", announcement.GetChildValue("name"),
                    "audio", AudioFromXml(announcement.FindChild("audio")), "video",
                    VideoFromXml(announcement.FindChild("video")), "rooms",
                    ListOf(announcement.FindChild("rooms"), RoomFromXml), "navigators",
                    ListOf(announcement.FindChild("navigators"), NavigatorFromXml));
}

std::string ListFromXml(const std::string& xml) {
    const auto document = VqXML::CreateXmlDocument(xml);
    if (!document)
        throw std::runtime_error("the agent's announcements are no XML");
    std::string text = R"({"announcements":[)";
    auto children = document->GetRootNode()->GetChildren();
    bool isFirst = true;
    for (auto* child = children->First(); child != nullptr; child = children->Next()) {
        if (!std::exchange(isFirst, false))
            text += ',';
        text += FromXml(*child).dump();
    }
    return text + "]}";
}

std::int32_t ReadVolume(const json& room, const std::string& path) {
    return static_cast<std::int32_t>(JsonObject(room, path).Integer("volume", -1, 100, -1));
}

std::string ToXml(const json& announcement, std::uint32_t id, const std::string& path) {
    JsonObject object(announcement, path);
    if (object.Has("id") && object.Number("id", 0) != id)
        throw ApiError(400, object.PathOf("id") + " is not the announcement's",
                       id != 0 ? std::to_string(id) + ", or nothing" : "no id: the agent chooses it");
    const auto node = VqXML::CreateXmlNode("announcement", "");
    if (id != 0)
        node->AddChildULong("id", id);
    node->AddChildString("name", object.Text("name", kMaxText));
    AudioToXml(object.Find("audio"), object.PathOf("audio"), *node);
    VideoToXml(object.Find("video"), object.PathOf("video"), *node);
    const auto rooms = VqXML::CreateXmlNode("rooms", "");
    ListToXml(object.Find("rooms"), object.PathOf("rooms"), *rooms, RoomToXml);
    node->AppendChild(rooms.Get());
    const auto navigators = VqXML::CreateXmlNode("navigators", "");
    ListToXml(object.Find("navigators"), object.PathOf("navigators"), *navigators, NavigatorToXml);
    node->AppendChild(navigators.Get());
    object.RefuseOthers();
    std::string text = ToXmlText(*node);
    if (!VqXML::CreateXmlDocument(text))
        throw ApiError(
            400, "a text of the announcement holds a character that cannot be kept",
            "no control characters but tab, line feed and carriage return, and no U+FFFE or U+FFFF");
    return text;
}

std::string RoomXml(std::uint32_t id, std::int32_t volume) {
    return ToXmlText(*RoomNode(id, volume));
}

std::string NavigatorXml(std::uint32_t id, std::uint32_t room, bool isOnscreen) {
    return ToXmlText(*NavigatorNode(id, room, isOnscreen));
}

} // namespace announcement_json

} // namespace controller
