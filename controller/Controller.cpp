#include "controller/Controller.h"

#include "controller/driver/Text.h"

#include <csignal>
#include <utility>

#include <unistd.h>

namespace controller {

namespace {

/// So long an orderly end may take before the program ends anyway.
constexpr std::chrono::seconds kPatience{8};

} // namespace

Controller::Controller(House house, Options options, Log& log)
    : m_options(std::move(options))
    , m_log(log)
    , m_output(STDOUT_FILENO,
               [](std::size_t dropped) {
                   return "(" + std::to_string(dropped) +
                          " lines are missing here, for nobody took them in time)\n";
               })
    , m_household(std::move(house), m_options.household, log)
    , m_parts(m_household.Parts())
    , m_server(m_parts, HttpLimits{})
    , m_service(ServiceManager::Environment::OfThisProcess(), m_parts.driver, m_parts.feed, log)
    , m_view(
          m_parts.house,
          m_parts.feed,
          [this](std::uint32_t id) { return m_parts.announcements.NameOf(id); },
          [this](const std::string& line) { Print(line); })
    , m_console({m_parts.announcements, [this](const std::string& line) { Print(line); }, [this] { End(); },
                 [this] { return m_parts.stop.Stop(); },
                 [this](std::uint32_t id, const Announcements::Done& done) {
                     m_parts.queue.Ask(id,
                                       [done](const PlayQueue::Outcome& outcome) { done(outcome.asked); });
                 }})
    , m_ends(m_parts.feed.Subscribe([this](const Event& event) {
        if (std::holds_alternative<events::AnnouncementEnded>(event.data))
            m_parts.driver.Post("looking whether there is more to do", [this] { EndWhenIdle(); });
    }))
    , m_signals(m_parts.driver.Context(), SIGINT, SIGTERM)
    , m_patience(m_parts.driver, "the end of patience") {
    m_household.ServeSoundsAt({!m_parts.house.tls.certificate.empty(), m_server.Port()});
    m_household.Start();
}

void Controller::Print(const std::string& line) {
    m_output.Write(PlainLines(line) + '\n');
}

void Controller::Greet() {
    Print(m_parts.house.name + ": " + CountOf(m_parts.house.rooms.size(), "room") + ", " +
          CountOf(m_parts.house.navigators.size(), "navigator") + ", " +
          CountOf(m_parts.announcements.All()->size(), "announcement") + ".");
    std::string addresses;
    for (const std::string& address : m_server.Addresses())
        addresses += (addresses.empty() ? "" : " or ") + address;
    Print("Open " + addresses + " in a browser.");
    if (::isatty(STDIN_FILENO) == 1)
        Print("Type a command, `help` lists them, `quit` ends.");
}

void Controller::Run() {
    m_signals.async_wait([this](const boost::system::error_code& error, int signal) {
        if (error)
            return;
        m_log.Notice(std::string("Ending, as asked by ") + (signal == SIGINT ? "SIGINT" : "SIGTERM"));
        // A second signal finds the default handling, and ends the program at once.
        m_signals.clear();
        End();
    });
    Greet();
    for (const std::uint32_t id : m_options.play)
        m_parts.queue.Ask(id, [this](const PlayQueue::Outcome& outcome) {
            if (outcome.asked.answer.kind != AgentAnswer::Kind::Done)
                m_log.Error("Nothing is played at the start: " + outcome.asked.answer.text);
        });
    ConsoleInput::Hooks hooks;
    hooks.take = [this](const ConsoleInput::Line& line, const ConsoleInput::Answered& answered) {
        m_console.Take(line, answered);
    };
    hooks.ended = [this] {
        InputEnded();
    };
    m_input = std::make_unique<ConsoleInput>(STDIN_FILENO, m_parts.driver, std::move(hooks));
    m_service.Ready(m_parts.house.name + " at " + m_server.Addresses().front());
    m_parts.driver.Run();
    m_input.reset();
}

void Controller::InputEnded() {
    if (m_options.isStaying)
        return;
    if (::isatty(STDIN_FILENO) == 1) {
        End();
        return;
    }
    m_isInputEnded = true;
    EndWhenIdle();
}

void Controller::EndWhenIdle() {
    if (m_isInputEnded && !m_household.IsBusy())
        End();
}

void Controller::End() {
    if (std::exchange(m_isEnding, true))
        return;
    m_patience.Start(kPatience, [this] {
        m_log.Error("Not everything could be ended in order; ending all the same");
        m_parts.driver.Stop();
    });
    m_service.Stopping();
    m_server.Close();
    m_household.End([this] { m_parts.driver.Stop(); });
}

} // namespace controller
