#include "announce/basics/TextWidth.h"
#include "announce/basics/Times.h"
#include "announce/basics/Words.h"
#include "announce/commands/Handlers.h"
#include "announce/commands/Watch.h"
#include "announce/house/EventText.h"

#include <algorithm>

namespace handlers {
namespace {

Style StyleOfOutcome(const std::string& outcome) {
    if (outcome == "ended")
        return Style::Good;
    return outcome == "dismissed" || outcome == "stopped" ? Style::Plain : Style::Bad;
}

Style StyleOfEvent(const Json& event) {
    const std::string type = event.at("type");
    const Json& data = event.at("data");
    const std::string level = type == "log" ? data.at("level").get<std::string>() : "";
    if (type == "room_output_failed" || type == "state_not_saved" || level == "error")
        return Style::Bad;
    return level == "warning" ? Style::Warning : Style::Plain;
}

/// What has been missed, and as much more as has happened before it is asked for: all that can be had.
constexpr long kMostRecent = 1000;

/// Prints events as they come, each once, also when the connection is made anew.
class EventPrinter {
public:
    explicit EventPrinter(Session& session) : m_session(session), m_types(session.arguments.All("type")) {
        session.output.PutJsonOnLines();
    }

    /// Prints what has happened before, as far as the controller still knows it.
    void PrintRecent(long limit) {
        const Json recent = m_session.client.Get("/api/events/recent?limit=" + std::to_string(limit));
        for (const Json& event : recent.at("events"))
            Print(event);
        m_session.output.Flush();
    }

    /// Prints what happens from now on, until the connection is lost. Begins with what it has missed.
    void Follow(const std::function<void()>& isWell) {
        EventStream events = m_session.client.Events();
        const auto number = events.Next().at("seq").get<std::uint64_t>();
        if (number < m_last)
            m_last = 0; // the controller has started again, and counts from 1
        if (m_isBegun && m_last < number)
            PrintRecent(kMostRecent);
        m_isBegun = true;
        m_last = std::max(m_last, number);
        isWell();
        for (;;) {
            const Json event = events.Next();
            if (event.contains("seq"))
                Print(event);
            m_session.output.Flush();
        }
    }

    /// What was printed before is followed without a gap.
    void Begin() noexcept { m_isBegun = true; }

private:
    void Print(const Json& event) {
        const auto number = event.at("seq").get<std::uint64_t>();
        if (number <= m_last)
            return;
        m_last = number;
        const std::string type = event.at("type");
        if (type == "announcement_stored")
            m_session.house.ForgetAnnouncements();
        if (m_types.empty() || std::find(m_types.begin(), m_types.end(), type) != m_types.end())
            PrintOne(event);
        if (type == "announcement_removed")
            m_session.house.ForgetAnnouncements();
    }

    void PrintOne(const Json& event) {
        if (m_session.output.IsJson()) {
            m_session.output.Add(event);
            return;
        }
        const std::string time = times::LocalText(event.at("time"));
        m_session.output.Raw(Styled(time, Style::Dim, m_session.output.Where()) + "  ");
        m_session.output.Line(event_text::Phrase(event.at("type"), event.at("data"), m_session.house),
                              StyleOfEvent(event));
    }

    Session& m_session;
    std::vector<std::string> m_types;
    std::uint64_t m_last = 0;
    bool m_isBegun = false;
};

void RequireTypes(const std::vector<std::string>& wanted, House& house) {
    if (wanted.empty())
        return;
    const std::vector<std::string> known = house.EventTypes();
    for (const std::string& type : wanted) {
        if (std::find(known.begin(), known.end(), type) != known.end())
            continue;
        const auto near = words::Nearest(known, type);
        throw Failure(ExitStatus::Usage, "there is no type of event \"" + text::Visible(type) + "\"",
                      near.empty() ? "one of " + words::Choice(known)
                                   : "the nearest: " + words::Choice(near));
    }
}

} // namespace

ExitStatus History(Session& session) {
    const long limit = session.arguments.Number("lines", 1, 1000, 20);
    const Json reply = session.client.Get("/api/history?limit=" + std::to_string(limit));
    if (session.output.IsJson())
        return session.Report(reply, "");
    House& house = session.house;
    Table table({{"BEGAN"}, {"ENDED"}, {"ANNOUNCEMENT"}, {"OUTCOME"}, {"ROOMS"}, {"SCREENS"}});
    for (const Json& entry : reply.at("history")) {
        const std::string outcome = entry.at("outcome");
        table.Add(
            {times::LocalText(entry.at("started")),
             times::LocalClock(entry.at("ended")),
             {entry.at("name").get<std::string>(), Style::Bold},
             {outcome, StyleOfOutcome(outcome)},
             words::Listed(entry.at("rooms"), [&](const Json& id) { return house.RoomName(id); }),
             words::Listed(entry.at("navigators"), [&](const Json& id) { return house.ScreenName(id); })});
    }
    return session.Print(table, "Nothing has been played yet.");
}

ExitStatus Events(Session& session) {
    RequireTypes(session.arguments.All("type"), session.house);
    EventPrinter printer(session);
    const long lines = session.arguments.Number("lines", 0, kMostRecent, 20);
    if (lines > 0)
        printer.PrintRecent(lines);
    if (!session.arguments.Has("follow"))
        return ExitStatus::Done;
    if (lines > 0)
        printer.Begin();
    KeepFollowing(session.client, lines > 0, [&](const auto& isWell) { printer.Follow(isWell); });
}

} // namespace handlers
