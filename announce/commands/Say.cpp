#include "announce/announcements/Targets.h"
#include "announce/basics/Failure.h"
#include "announce/basics/Times.h"
#include "announce/commands/Handlers.h"
#include "announce/commands/PlayWatch.h"

namespace handlers {
namespace {

Json TargetsOf(Session& session, const char* list, const char* option) {
    const fields::Field& field = fields::Named(list);
    Json items = Json::array();
    for (const std::string& text : session.arguments.All(option))
        targets::PutInto(
            items, targets::Read(field, targets::TakenApart(field, text, session.house), session.house));
    return items;
}

std::string SoundIn(Session& session, const char* option) {
    const auto text = session.arguments.Find(option);
    const std::string what = std::string("--") + option;
    return text ? fields::Read(fields::Named("sound"), what, *text, session.house).get<std::string>() : "";
}

Json OrderOf(Session& session) {
    Json order{{"text", session.arguments.Text("text")},       {"voice", session.arguments.Text("voice")},
               {"sound", SoundIn(session, "sound")},           {"chime", SoundIn(session, "chime")},
               {"rooms", TargetsOf(session, "rooms", "room")}, {"navigators", Json::array()}};
    for (const Json& screen : TargetsOf(session, "screens", "screen"))
        order["navigators"].push_back({{"id", screen.at("id")}});
    if (order["rooms"].empty() && order["navigators"].empty())
        throw Failure(ExitStatus::Usage, "nobody would hear or see it", "at least one --room or --screen");
    if (const auto time = session.arguments.Find("popup-time"))
        order["timeout_ms"] = times::ReadMilliseconds("--popup-time", *time);
    if (session.arguments.Has("urgent"))
        order["urgent"] = true;
    return order;
}

/// How it went so far, and why it is not spoken, if it is not.
void Warn(const Json& said) {
    if (const Json& trouble = said.at("trouble"); !trouble.is_null())
        Tell("warning: the text is not spoken: " + trouble.get<std::string>(), Style::Warning);
}

} // namespace

ExitStatus Say(Session& session) {
    const Json order = OrderOf(session);
    if (!session.arguments.Has("wait")) {
        const Json reply = session.client.Post("/api/say", order);
        Warn(reply);
        return session.Report(reply, reply.at("state") == "waiting" ? "It waits for its turn" : "It is said");
    }
    PlayWatch watch(session.client);
    const Json said = watch.Say(order);
    Warn(said);
    const PlayWatch::End end = watch.Follow();
    (void)session.Report({{"announcement", said.at("announcement")}, {"outcome", end.outcome}},
                         "It was said: " + end.outcome); // how it ended is the status
    return end.isComplete ? ExitStatus::Done : ExitStatus::EndedOtherwise;
}

} // namespace handlers
