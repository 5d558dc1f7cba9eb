#include "announce/commands/Handlers.h"
#include "announce/commands/ShowAnnouncement.h"
#include "announce/house/AnnouncementOptions.h"

namespace handlers {
namespace {

std::string PathOf(const Json& announcement) {
    return "/api/announcements/" + announcement.at("id").dump();
}

void Report(Session& session, const Json& announcement, const std::string& what) {
    if (session.output.IsJson())
        session.output.Add(announcement);
    else
        session.output.Line(announcement_text::Title(announcement) + " is " + what);
}

} // namespace

ExitStatus List(Session& session) {
    if (session.output.IsJson()) {
        session.output.Add(session.client.Get("/api/announcements"));
        return ExitStatus::Done;
    }
    House house(session.client);
    Table table({{"ID", Table::Align::Right}, {"NAME"}, {"SOUND"}, {"ROOMS"}, {"SCREENS"}, {"TEXT"}});
    for (const Json& one : house.Announcements())
        table.Add({one.at("id").dump(),
                   {one.at("name").get<std::string>(), Style::Bold},
                   one.at("audio").at("file").get<std::string>(),
                   announcement_text::Rooms(one, house),
                   announcement_text::Screens(one, house),
                   announcement_text::Message(one)});
    if (table.IsEmpty())
        session.output.Line("There are no announcements; \"announce add\" makes one.");
    else
        session.output.Add(table);
    return ExitStatus::Done;
}

ExitStatus Show(Session& session) {
    House house(session.client);
    const Json& found = house.FindAnnouncement(session.arguments.Text("announcement"));
    if (session.output.IsJson())
        session.output.Add(found);
    else
        session.output.Add(announcement_text::Whole(found, house));
    return ExitStatus::Done;
}

ExitStatus Add(Session& session) {
    House house(session.client);
    Json announcement = announcement_options::Nothing();
    announcement_options::Apply(session.arguments, house, announcement);
    if (announcement.at("name").get<std::string>().empty())
        throw Failure(ExitStatus::Usage, "the announcement has no name", "--name NAME");
    Report(session, session.client.Post("/api/announcements", announcement), "stored");
    return ExitStatus::Done;
}

ExitStatus Copy(Session& session) {
    House house(session.client);
    Json copy = house.FindAnnouncement(session.arguments.Text("announcement"));
    copy.erase("id");
    copy["name"] =
        session.arguments.Find("new-name").value_or(copy.at("name").get<std::string>() + " (copy)");
    announcement_options::Apply(session.arguments, house, copy);
    Report(session, session.client.Post("/api/announcements", copy), "stored");
    return ExitStatus::Done;
}

ExitStatus Remove(Session& session) {
    House house(session.client);
    // All of them are looked for first: a mistyped name removes nothing.
    std::vector<Json> found;
    for (const std::string& text : session.arguments.All("announcement"))
        found.push_back(house.FindAnnouncement(text));
    Json removed = Json::array();
    for (const Json& announcement : found) {
        session.client.Delete(PathOf(announcement));
        removed.push_back(announcement.at("id"));
        if (!session.output.IsJson())
            session.output.Line(announcement_text::Title(announcement) + " is removed");
    }
    if (session.output.IsJson())
        session.output.Add({{"removed", removed}});
    return ExitStatus::Done;
}

} // namespace handlers
