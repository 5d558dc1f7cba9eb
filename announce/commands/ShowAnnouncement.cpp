#include "announce/commands/ShowAnnouncement.h"

#include "announce/house/Times.h"
#include "announce/output/TextWidth.h"

namespace announcement_text {
namespace {

void Append(std::string& list, const std::string& more) {
    if (!list.empty())
        list += ", ";
    list += more;
}

std::string Sound(const Json& audio) {
    const std::string file = audio.at("file");
    if (file.empty())
        return "";
    const auto delay = audio.at("delay_ms").get<std::uint64_t>();
    return SoundName(file) + (delay > 0 ? ", " + times::LengthText(delay) + " later" : "");
}

std::string Popup(const Json& video) {
    const auto delay = video.at("delay_ms").get<std::uint64_t>();
    const auto timeout = video.at("timeout_ms").get<std::uint64_t>();
    std::string popup = "for " + times::LengthText(timeout != 0 ? timeout : 30000);
    if (delay > 0)
        Append(popup, times::LengthText(delay) + " later");
    Append(popup, video.at("ok_button").get<bool>() ? "with an OK button" : "without an OK button");
    return popup;
}

} // namespace

std::string Rooms(const Json& announcement, House& house) {
    std::string rooms;
    for (const Json& room : announcement.at("rooms")) {
        const auto volume = room.at("volume").get<int>();
        Append(rooms, house.RoomName(room.at("id")) + (volume > 0 ? " " + std::to_string(volume) : ""));
    }
    return rooms;
}

std::string Screens(const Json& announcement, House& house) {
    std::string screens;
    for (const Json& screen : announcement.at("navigators"))
        Append(screens, house.ScreenName(screen.at("id")));
    return screens;
}

std::string Message(const Json& announcement) {
    const Json& video = announcement.at("video");
    const Json& variable = video.at("variable");
    if (variable.is_null())
        return video.at("text");
    const std::string name = variable.at("name");
    return "the value of " + (name.empty() ? "variable " + VariableId(variable) : name);
}

Table Whole(const Json& announcement, House& house) {
    const Json& video = announcement.at("video");
    Table table({{""}, {""}});
    const auto add = [&table](const char* what, const std::string& text) {
        table.Add({{what, Style::Dim}, text.empty() ? "-" : text});
    };
    add("id", announcement.at("id").dump());
    table.Add({{"name", Style::Dim}, {announcement.at("name").get<std::string>(), Style::Bold}});
    add("sound", Sound(announcement.at("audio")));
    add("rooms", Rooms(announcement, house));
    add("text", Message(announcement));
    add("image", video.at("image"));
    add("screens", Screens(announcement, house));
    add("popup", Popup(video));
    return table;
}

std::string Title(const Json& announcement) {
    return "announcement " + announcement.at("id").dump() + " (" +
           text::Visible(announcement.at("name").get<std::string>()) + ")";
}

} // namespace announcement_text
