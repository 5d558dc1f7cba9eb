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
    View(Session& session, const CommandDefinition& command) : m_session(session), m_command(command) {}

    void Show() {
        (void)m_command.run(m_session); // what it ends with counts when it ends
        const std::string now = m_session.output.Take();
        if (now == m_shown)
            return;
        const bool isTerminal = m_session.output.Where().isTerminal && !m_session.output.IsJson();
        const bool isFirst = m_shown.empty();
        WriteToStandardOutput((isTerminal                             ? "\x1b[H\x1b[2J"
                               : isFirst || m_session.output.IsJson() ? ""
                                                                      : "\n") +
                              now);
        m_shown = now;
    }

private:
    Session& m_session;
    const CommandDefinition& m_command;
    std::string m_shown;
};

bool IsChange(const Json& event) {
    return event.at("type") != "alive" && event.at("type") != "log";
}

/// Shows it until the connection is lost; `pause` is how long to wait before the next one is made.
void Follow(Session& session, View& view, seconds& pause) {
    EventStream events = session.client.Events();
    for (;;) {
        if (!IsChange(events.Next()))
            continue;
        while (events.Next(kCrowd)) {
        }
        view.Show();
        pause = kFirstPause;
    }
}

} // namespace

ExitStatus Watch(Session& session, const CommandDefinition& command) {
    session.output.PutJsonOnLines();
    View view(session, command);
    bool isConnectedOnce = false;
    for (seconds pause = kFirstPause;; pause = std::min(pause * 2, kLongestPause)) {
        try {
            view.Show();
            isConnectedOnce = true;
            Follow(session, view, pause);
        } catch (const Failure& failure) {
            if (failure.Status() != ExitStatus::NoConnection || !isConnectedOnce)
                throw;
            Tell(std::string("announce: ") + failure.what() + "; trying again", Style::Warning);
        }
        session.client.Sleep(pause);
    }
}
