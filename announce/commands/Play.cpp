#include "announce/announcements/Views.h"
#include "announce/basics/TextWidth.h"
#include "announce/commands/Handlers.h"
#include "announce/commands/PlayWatch.h"

namespace handlers {
namespace {

using announcement_text::Title;

ExitStatus PlayAndGo(const Session& session, const Json& announcement) {
    const Json reply = session.client.Post(PathOf(announcement) + "/play");
    const bool waits = reply.at("state") == "waiting";
    return session.Report(reply, Title(announcement) + (waits ? " waits for its turn" : " plays"));
}

ExitStatus PlayAndWait(const Session& session, const Json& announcement) {
    PlayWatch watch(session.client, announcement.at("id"));
    const PlayWatch::End end = watch.Play();
    (void)session.Report({{"announcement", announcement.at("id")}, {"outcome", end.outcome}},
                         Title(announcement) + ": " + end.outcome); // how it ended is the status
    return end.isComplete ? ExitStatus::Done : ExitStatus::EndedOtherwise;
}

} // namespace

ExitStatus Play(Session& session) {
    const Json& announcement = session.Announcement();
    return session.arguments.Has("wait") ? PlayAndWait(session, announcement)
                                         : PlayAndGo(session, announcement);
}

ExitStatus Dismiss(Session& session) {
    const Json reply = session.client.Post("/api/dismiss");
    const Json& announcement = reply.at("announcement");
    if (announcement.is_null() || session.output.IsJson())
        return session.Report(reply, "Nothing plays; there was nothing to dismiss.");
    return session.Report(reply, "The popup of announcement " + announcement.dump() + " (" +
                                     text::Visible(session.house.AnnouncementName(announcement)) +
                                     ") is dismissed");
}

ExitStatus Stop(Session& session) {
    const Json reply = session.client.Post("/api/stop");
    return session.Report(reply, reply.at("stopped") == true ? "Stopped"
                                                             : "Nothing plays; there was nothing to stop.");
}

} // namespace handlers
