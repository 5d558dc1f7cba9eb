#include "announce/commands/Handlers.h"
#include "announce/commands/PlayWatch.h"
#include "announce/commands/ShowAnnouncement.h"
#include "announce/output/TextWidth.h"

namespace handlers {
namespace {

ExitStatus PlayAndGo(Session& session, const Json& announcement) {
    const Json reply = session.client.Post("/api/announcements/" + announcement.at("id").dump() + "/play");
    if (session.output.IsJson())
        session.output.Add(reply);
    else if (reply.at("state") == "waiting")
        session.output.Line(announcement_text::Title(announcement) + " waits for its turn");
    else
        session.output.Line(announcement_text::Title(announcement) + " plays");
    return ExitStatus::Done;
}

ExitStatus PlayAndWait(Session& session, const Json& announcement) {
    PlayWatch watch(session.client, announcement.at("id"));
    const PlayWatch::End end = watch.Play();
    if (session.output.IsJson())
        session.output.Add({{"announcement", announcement.at("id")}, {"outcome", end.outcome}});
    else
        session.output.Line(announcement_text::Title(announcement) + ": " + end.outcome);
    return end.isComplete ? ExitStatus::Done : ExitStatus::EndedOtherwise;
}

} // namespace

ExitStatus Play(Session& session) {
    House house(session.client);
    const Json& announcement = house.FindAnnouncement(session.arguments.Text("announcement"));
    return session.arguments.Has("wait") ? PlayAndWait(session, announcement)
                                         : PlayAndGo(session, announcement);
}

ExitStatus Dismiss(Session& session) {
    const Json reply = session.client.Post("/api/dismiss");
    if (session.output.IsJson()) {
        session.output.Add(reply);
        return ExitStatus::Done;
    }
    House house(session.client);
    const Json& announcement = reply.at("announcement");
    session.output.Line(announcement.is_null()
                            ? "Nothing plays; there was nothing to dismiss."
                            : "The popup of announcement " + announcement.dump() + " (" +
                                  text::Visible(house.AnnouncementName(announcement)) + ") is dismissed");
    return ExitStatus::Done;
}

} // namespace handlers
