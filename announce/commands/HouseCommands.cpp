#include "announce/commands/Handlers.h"
#include "announce/house/House.h"
#include "announce/house/Times.h"
#include "announce/output/TextWidth.h"

namespace handlers {
namespace {

/// What the controller gives, when programs read it.
bool IsPrintedAsJson(Session& session, const char* path) {
    if (!session.output.IsJson())
        return false;
    session.output.Add(session.client.Get(path));
    return true;
}

std::string TextOr(const Json& value, const std::string& otherwise) {
    return value.is_string() ? value.get<std::string>() : otherwise;
}

std::string Waiting(const Json& status, House& house) {
    std::string names;
    for (const Json& id : status.at("waiting"))
        names += (names.empty() ? "" : ", ") + house.AnnouncementName(id);
    return names.empty() ? "nothing" : names;
}

std::string PopupText(const Json& popup) {
    return "\"" + popup.at("message").get<std::string>() + "\" until " + times::LocalClock(popup.at("ends"));
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
    const Json& playing = status.at("playing");
    add("playing", playing.is_null() ? Table::Cell("nothing")
                                     : Table::Cell(playing.at("name").get<std::string>() + ", since " +
                                                       times::LocalClock(playing.at("since")),
                                                   Style::Good));
    const Json& sound = status.at("sound");
    if (!sound.is_null())
        add("sound", SoundName(sound.at("file")));
    add("waiting", Waiting(status, house));
    for (const Json& shown : status.at("popups"))
        add("popup", house.ScreenName(shown.at("navigator")) + ": " + PopupText(shown.at("popup")));
    if (status.at("state_saved").get<bool>())
        add("saved", "yes");
    else
        add("saved", {"no: " + TextOr(status.at("state_error"), "the reason is not known"), Style::Bad});
    return table;
}

std::string RoomState(const Json& room) {
    if (room.at("in_announcement").get<bool>())
        return "plays an announcement";
    return room.at("awake").get<bool>() ? "screens awake" : "";
}

} // namespace

ExitStatus Status(Session& session) {
    if (IsPrintedAsJson(session, "/api/status"))
        return ExitStatus::Done;
    House house(session.client);
    session.output.Add(StatusTable(session.client.Get("/api/status"), house));
    return ExitStatus::Done;
}

ExitStatus Rooms(Session& session) {
    if (IsPrintedAsJson(session, "/api/rooms"))
        return ExitStatus::Done;
    House house(session.client);
    Table table({{"ID", Table::Align::Right},
                 {"NAME"},
                 {"VOLUME", Table::Align::Right},
                 {"AT MOST", Table::Align::Right},
                 {"OUTPUT"},
                 {"STATE"}});
    for (const Json& room : house.Rooms()) {
        const Json& trouble = room.at("trouble");
        table.Add({room.at("id").dump(),
                   {room.at("name").get<std::string>(), Style::Bold},
                   room.at("volume").dump(),
                   room.at("max_volume").dump(),
                   room.at("output").get<std::string>(),
                   trouble.is_null() ? Table::Cell(RoomState(room))
                                     : Table::Cell(trouble.get<std::string>(), Style::Bad)});
    }
    session.output.Add(table);
    return ExitStatus::Done;
}

ExitStatus SetVolume(Session& session) {
    House house(session.client);
    const Json& room = house.FindRoom(session.arguments.Text("room"));
    const long volume = ReadNumber("VOLUME", session.arguments.Text("volume"), 0, 100);
    const Json reply =
        session.client.Put("/api/rooms/" + room.at("id").dump() + "/volume", {{"volume", volume}});
    if (session.output.IsJson()) {
        session.output.Add(reply);
        return ExitStatus::Done;
    }
    const std::string limit = reply.at("volume") == volume ? "" : ", which is the most for it";
    session.output.Line(text::Visible(room.at("name").get<std::string>()) + " is at volume " +
                        reply.at("volume").dump() + limit);
    return ExitStatus::Done;
}

ExitStatus Screens(Session& session) {
    if (IsPrintedAsJson(session, "/api/navigators"))
        return ExitStatus::Done;
    House house(session.client);
    Table table({{"ID", Table::Align::Right}, {"NAME"}, {"ROOM"}, {"PAGES", Table::Align::Right}, {"POPUP"}});
    for (const Json& screen : house.Screens()) {
        const Json& popup = screen.at("popup");
        table.Add({screen.at("id").dump(),
                   {screen.at("name").get<std::string>(), Style::Bold},
                   house.RoomName(screen.at("room")),
                   screen.at("pages").dump(),
                   popup.is_null() ? Table::Cell("") : Table::Cell(PopupText(popup), Style::Good)});
    }
    if (table.IsEmpty())
        session.output.Line("The house has no screens.");
    else
        session.output.Add(table);
    return ExitStatus::Done;
}

ExitStatus Variables(Session& session) {
    if (IsPrintedAsJson(session, "/api/variables"))
        return ExitStatus::Done;
    House house(session.client);
    Table table({{"ID"}, {"NAME"}, {"VALUE"}});
    for (const Json& variable : house.Variables())
        table.Add({VariableId(variable),
                   {variable.at("name").get<std::string>(), Style::Bold},
                   variable.at("value").get<std::string>()});
    if (table.IsEmpty())
        session.output.Line("The house has no variables.");
    else
        session.output.Add(table);
    return ExitStatus::Done;
}

ExitStatus SetVariable(Session& session) {
    House house(session.client);
    const Json& variable = house.FindVariable(session.arguments.Text("variable"));
    const Json reply = session.client.Put("/api/variables/" + VariableId(variable),
                                          {{"value", session.arguments.Text("value")}});
    if (session.output.IsJson())
        session.output.Add(reply);
    else
        session.output.Line(text::Visible(reply.at("name").get<std::string>() + " is \"" +
                                          reply.at("value").get<std::string>() + "\""));
    return ExitStatus::Done;
}

} // namespace handlers
