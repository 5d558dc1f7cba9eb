#include "announce/basics/Numbers.h"
#include "announce/basics/TextWidth.h"
#include "announce/basics/Times.h"
#include "announce/basics/Words.h"
#include "announce/commands/Handlers.h"

#include <algorithm>

namespace handlers {
namespace {

Table::Cell BoldName(const Json& item) {
    return {item.at("name").get<std::string>(), Style::Bold};
}

std::string PopupText(const Json& popup) {
    return "\"" + popup.at("message").get<std::string>() + "\" until " + times::LocalClock(popup.at("ends"));
}

Table::Cell Playing(const Json& playing) {
    if (playing.is_null())
        return "nothing";
    const std::string since = ", since " + times::LocalClock(playing.at("since"));
    if (playing.at("stopped").get<bool>())
        return {playing.at("name").get<std::string>() + since + ", stopped", Style::Warning};
    return {playing.at("name").get<std::string>() + since + ", for another " +
                times::LengthText(times::SecondsUntil(playing.at("ends")) * 1000),
            Style::Good};
}

/// ", 3 s of 12.5 s"; nothing while the length is not known.
std::string SoundLength(const Json& playing) {
    if (playing.is_null() || playing.at("sound").is_null() || playing.at("sound").at("length_ms") == 0)
        return "";
    const auto length = playing.at("sound").at("length_ms").get<std::uint64_t>();
    const auto played = times::SecondsSince(playing.at("sound").at("since")) * 1000;
    return ", " + times::LengthText(std::min<std::uint64_t>(played, length)) + " of " +
           times::LengthText(length);
}

Table::Cell Saved(const Json& status) {
    if (status.at("state_saved").get<bool>())
        return "yes";
    const Json& error = status.at("state_error");
    return {"no: " + (error.is_string() ? error.get<std::string>() : "the reason is not known"), Style::Bad};
}

Table StatusTable(const Json& status, House& house) {
    Table table({{""}, {""}});
    const auto add = [&table](const char* what, Table::Cell cell) {
        table.Add({{what, Style::Dim}, std::move(cell)});
    };
    add("house", {status.at("house").get<std::string>(), Style::Bold});
    add("controller", status.at("version").get<std::string>() + ", running since " +
                          times::LocalText(status.at("started")));
    if (!status.at("agent").get<bool>())
        add("agent", {"is not running", Style::Bad});
    add("playing", Playing(status.at("playing")));
    if (const Json& sound = status.at("sound"); !sound.is_null())
        add("sound", SoundName(sound.at("file")) + SoundLength(status.at("playing")));
    const std::string waiting =
        words::Listed(status.at("waiting"), [&](const Json& id) { return house.AnnouncementName(id); });
    add("waiting", waiting.empty() ? "nothing" : waiting);
    for (const Json& shown : status.at("popups"))
        add("popup", house.ScreenName(shown.at("navigator")) + ": " + PopupText(shown.at("popup")));
    add("saved", Saved(status));
    return table;
}

Table::Cell RoomState(const Json& room) {
    const std::string health = room.at("health").get<std::string>();
    if (const Json& trouble = room.at("trouble"); !trouble.is_null())
        return {(health == "silent" ? "silent: " : "") + trouble.get<std::string>(), Style::Bad};
    if (room.at("in_announcement").get<bool>())
        return "plays an announcement";
    if (room.at("awake").get<bool>())
        return "screens awake";
    if (!room.at("answers").get<bool>())
        return "never answers";
    return health;
}

} // namespace

ExitStatus Status(Session& session) {
    if (session.HasPrintedJson("/api/status"))
        return ExitStatus::Done;
    return session.Print(StatusTable(session.client.Get("/api/status"), session.house));
}

ExitStatus Rooms(Session& session) {
    if (session.HasPrintedJson("/api/rooms"))
        return ExitStatus::Done;
    Table table({{"ID", Table::kRight},
                 {"NAME"},
                 {"VOLUME", Table::kRight},
                 {"AT MOST", Table::kRight},
                 {"OUTPUT"},
                 {"STATE"}});
    for (const Json& room : session.house.Rooms())
        table.Add({IdOf(room), BoldName(room), room.at("volume").dump(), room.at("max_volume").dump(),
                   room.at("output").get<std::string>(), RoomState(room)});
    return session.Print(table);
}

ExitStatus SetVolume(Session& session) {
    const Json& room = session.house.FindRoom(session.arguments.Text("room"));
    const long volume = ReadNumber("VOLUME", session.arguments.Text("volume"), 0, 100);
    const Json reply = session.client.Put("/api/rooms/" + IdOf(room) + "/volume", {{"volume", volume}});
    const std::string limit = reply.at("volume") == volume ? "" : ", which is the most for it";
    return session.Report(reply, text::Visible(room.at("name").get<std::string>()) + " is at volume " +
                                     reply.at("volume").dump() + limit);
}

ExitStatus Screens(Session& session) {
    if (session.HasPrintedJson("/api/navigators"))
        return ExitStatus::Done;
    Table table({{"ID", Table::kRight}, {"NAME"}, {"ROOM"}, {"PAGES", Table::Align::Right}, {"POPUP"}});
    for (const Json& screen : session.house.Screens()) {
        const Json& popup = screen.at("popup");
        table.Add({IdOf(screen), BoldName(screen), session.house.RoomName(screen.at("room")),
                   screen.at("pages").dump(),
                   popup.is_null() ? Table::Cell("") : Table::Cell(PopupText(popup), Style::Good)});
    }
    return session.Print(table, "The house has no screens.");
}

ExitStatus Variables(Session& session) {
    if (session.HasPrintedJson("/api/variables"))
        return ExitStatus::Done;
    Table table({{"ID"}, {"NAME"}, {"VALUE"}});
    for (const Json& variable : session.house.Variables())
        table.Add({IdOf(variable), BoldName(variable), variable.at("value").get<std::string>()});
    return session.Print(table, "The house has no variables.");
}

ExitStatus SetVariable(Session& session) {
    const Json& variable = session.house.FindVariable(session.arguments.Text("variable"));
    const Json reply =
        session.client.Put("/api/variables/" + IdOf(variable), {{"value", session.arguments.Text("value")}});
    return session.Report(reply, text::Visible(reply.at("name").get<std::string>() + " is \"" +
                                               reply.at("value").get<std::string>() + "\""));
}

} // namespace handlers
