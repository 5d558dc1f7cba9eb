#include "announce/announcements/Fields.h"
#include "announce/announcements/Options.h"
#include "announce/announcements/Views.h"
#include "announce/commands/Handlers.h"
#include "announce/commands/Several.h"

namespace handlers {

using announcement_text::Title;

ExitStatus List(Session& session) {
    if (session.HasPrintedJson("/api/announcements"))
        return ExitStatus::Done;
    Table table({{"ID", Table::kRight}, {"NAME"}, {"SOUND"}, {"ROOMS"}, {"SCREENS"}, {"TEXT"}});
    for (const Json& one : session.house.Announcements())
        table.Add({one.at("id").dump(),
                   {one.at("name").get<std::string>(), Style::Bold},
                   one.at("audio").at("file").get<std::string>(),
                   announcement_text::Of("rooms", one, session.house),
                   announcement_text::Of("screens", one, session.house),
                   announcement_text::Message(one, session.house)});
    return session.Print(table, "There are no announcements; \"announce add\" makes one.");
}

ExitStatus Show(Session& session) {
    const Json& found = session.Announcement();
    if (session.output.IsJson())
        return session.Report(found, "");
    return session.Print(announcement_text::Whole(found, session.house));
}

ExitStatus Add(Session& session) {
    Json announcement = fields::Nothing();
    announcement_options::Apply(session.arguments, session.house, announcement);
    if (announcement.at("name").get<std::string>().empty())
        throw Failure(ExitStatus::Usage, "the announcement has no name", "--name NAME");
    const Json stored = session.client.Post("/api/announcements", announcement);
    return session.Report(stored, Title(stored) + " is stored");
}

ExitStatus Copy(Session& session) {
    Json copy = session.Announcement();
    copy.erase("id");
    copy["name"] =
        session.arguments.Find("new-name").value_or(copy.at("name").get<std::string>() + " (copy)");
    announcement_options::Apply(session.arguments, session.house, copy);
    const Json stored = session.client.Post("/api/announcements", copy);
    return session.Report(stored, Title(stored) + " is stored");
}

ExitStatus Remove(Session& session) {
    // All of them are looked for first: a mistyped name removes nothing.
    std::vector<Json> found;
    for (const std::string& text : session.arguments.All("announcement"))
        found.push_back(session.house.FindAnnouncement(text));
    Json removed = Json::array();
    Several several(session, found.size(), "removed");
    for (const Json& announcement : found)
        several.Do(Title(announcement), [&] {
            session.client.Delete(PathOf(announcement));
            removed.push_back(announcement.at("id"));
            session.ReportOne(Title(announcement) + " is removed");
        });
    return several.End({{"removed", removed}});
}

} // namespace handlers
