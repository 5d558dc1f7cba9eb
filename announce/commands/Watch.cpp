#include "announce/commands/Watch.h"

#include <algorithm>

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

/// Events come in crowds: so long after one the others are waited for.
constexpr milliseconds kCrowd{50};
constexpr seconds kFirstPause{1};
constexpr seconds kLongestPause{30};

class View {
public:
    View(const Session& session, const CommandDefinition& command) : m_session(session), m_command(command) {}

    void Show() {
        // A session of its own: what was fetched for the last one is old.
        Session session{m_session.commands, m_session.client, m_session.output, m_session.arguments};
        (void)m_command.run(session); // what it ends with counts when it ends
        const std::string now = session.output.Take();
        if (now == m_shown)
            return;
        const bool isTerminal = session.output.Where().isTerminal && !session.output.IsJson();
        const bool isNext = !m_shown.empty() && !session.output.IsJson();
        WriteToStandardOutput((isTerminal ? "\x1b[H\x1b[2J" : isNext ? "\n" : "") + now);
        m_shown = now;
    }

private:
    const Session& m_session;
    const CommandDefinition& m_command;
    std::string m_shown;
};

bool IsChange(const Json& event) {
    return event.at("type") != "alive" && event.at("type") != "log";
}

/// Shows it until the connection is lost. The first event is the state, so that what has been missed is
/// shown.
void Follow(Session& session, View& view, const std::function<void()>& isWell) {
    EventStream events = session.client.Events();
    for (;;) {
        if (!IsChange(events.Next()))
            continue;
        while (events.Next(kCrowd)) {
        }
        view.Show();
        isWell();
    }
}

} // namespace

ExitStatus Watch(Session& session, const CommandDefinition& command) {
    session.output.PutJsonOnLines();
    View view(session, command);
    view.Show();
    KeepFollowing(session.client, true, [&](const auto& isWell) { Follow(session, view, isWell); });
}

void KeepFollowing(ApiClient& client,
                   bool hasBeenWell,
                   const std::function<void(const std::function<void()>& isWell)>& follow) {
    seconds pause = kFirstPause;
    const auto isWell = [&] {
        hasBeenWell = true;
        pause = kFirstPause;
    };
    for (;; pause = std::min(pause * 2, kLongestPause)) {
        try {
            follow(isWell);
        } catch (const Failure& failure) {
            if (failure.Status() != ExitStatus::NoConnection || !hasBeenWell)
                throw;
            Tell(std::string("announce: ") + failure.what() + "; trying again", Style::Warning);
        }
        client.Sleep(pause);
    }
}
