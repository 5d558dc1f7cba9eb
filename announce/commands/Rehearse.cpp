#include "announce/basics/Times.h"
#include "announce/commands/Handlers.h"
#include "announce/house/EventText.h"

#include <cstdio>

namespace handlers {
namespace {

/// "1:02.500".
std::string ClockText(std::uint64_t milliseconds) {
    char text[40];
    (void)std::snprintf(
        text, sizeof text, "%llu:%02llu.%03llu", static_cast<unsigned long long>(milliseconds / 60000),
        static_cast<unsigned long long>(milliseconds / 1000 % 60),
        static_cast<unsigned long long>(milliseconds % 1000)); // fits: 20 digits and 7 characters
    return text;
}

} // namespace

ExitStatus Rehearse(Session& session) {
    Json order{{"announcement", session.Announcement().at("id")}};
    if (const auto length = session.arguments.Find("sound-length"))
        order["sound_ms"] = times::ReadMilliseconds("--sound-length", *length);
    const Json rehearsal = session.client.Post("/api/rehearsal", order);
    if (session.output.IsJson())
        return session.Report(rehearsal, "");
    Table table({{"TIME", Table::kRight}, {"WHAT HAPPENS"}});
    for (const Json& entry : rehearsal.at("timeline")) {
        const std::string what = entry.at("what");
        // What the agent says beside it is for those who mend it; JSON has it.
        if (what == "log" && entry.at("level") != "error")
            continue;
        const bool isTrouble =
            what == "log" || what == "room_missing" || what == "screen_missing" || what == "sound_missing";
        table.Add({{ClockText(entry.at("at_ms")), Style::Dim},
                   {event_text::Phrase(what, entry, session.house), isTrouble ? Style::Bad : Style::Plain}});
    }
    session.output.Add(table);
    if (!rehearsal.at("complete").get<bool>())
        session.output.Line("It does not come to an end within ten minutes.", Style::Warning);
    return ExitStatus::Done;
}

} // namespace handlers
