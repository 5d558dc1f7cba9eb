#include "announce/basics/Numbers.h"
#include "announce/basics/TextWidth.h"
#include "announce/basics/Times.h"
#include "announce/commands/Handlers.h"

#include <limits>

namespace handlers {
namespace {

constexpr long kMost = std::numeric_limits<std::int32_t>::max();

std::string EntryPath(const Session& session) {
    const std::string text = session.arguments.Text("entry");
    return "/api/queue/" + std::to_string(ReadNumber("entry", text, 1, kMost));
}

} // namespace

ExitStatus Queue(Session& session) {
    if (session.HasPrintedJson("/api/queue"))
        return ExitStatus::Done;
    const Json reply = session.client.Get("/api/queue");
    Table table({{"ENTRY"}, {"ANNOUNCEMENT"}, {"ASKED FOR"}});
    for (const Json& one : reply.at("queue"))
        table.Add({one.at("entry").dump(),
                   {one.at("name").get<std::string>(), Style::Bold},
                   times::LocalClock(one.at("asked_at"))});
    return session.Print(table, "Nothing waits.");
}

ExitStatus RemoveQueued(Session& session) {
    session.client.Delete(EntryPath(session));
    return session.Report({{"removed", session.arguments.Text("entry")}}, "It is taken back");
}

ExitStatus MoveQueued(Session& session) {
    const auto before = session.arguments.Find("before");
    Json order{{"before", nullptr}};
    if (before)
        order["before"] = ReadNumber("--before", *before, 1, kMost);
    const Json reply = session.client.Post(EntryPath(session) + "/move", order);
    return session.Report(reply, before ? "It is played before entry " + text::Visible(*before)
                                        : "It is played behind all that wait");
}

} // namespace handlers
