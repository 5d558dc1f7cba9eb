#include "controller/Controller.h"

#include "controller/console/ConsoleCommand.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <utility>

#include <unistd.h>

namespace controller {

namespace {

/// So long an orderly end may take before the program ends anyway.
constexpr std::chrono::seconds kPatience{8};

std::string CountOf(std::size_t count, const std::string& thing) {
    return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

} // namespace

void Controller::AnnouncementEnded() {
    // Rooms that were taken out of the announcement while it played get no word from the agent.
    m_audio.AnnouncementEnded();
    for (auto& [id, room] : m_rooms)
        room.RestoreVideoState();
    m_driver.Post("looking whether there is more to do", [this] { EndWhenIdle(); });
}

void Controller::Print(const std::string& line) {
    // Texts from outside must not steer the terminal.
    std::string plain = line;
    std::replace_if(
        plain.begin(), plain.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20 && c != '\n'; },
        ' ');
    // Whoever closed standard output does not want the lines.
    (void)std::fprintf(stdout, "%s\n", plain.c_str());
    (void)std::fflush(stdout);
}

void Controller::Greet() {
    Print(m_house.name + ": " + CountOf(m_house.rooms.size(), "room") + ", " +
          CountOf(m_house.navigators.size(), "navigator") + ", " +
          CountOf(m_announcements.All()->size(), "announcement") + ".");
    Print("Open " + m_server.Address() + " in a browser.");
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
        m_announcements.Play(id, [this](const Announcements::Outcome& outcome) {
            if (outcome.answer.kind != AgentAnswer::Kind::Done)
                m_log.Error("Nothing is played at the start: " + outcome.answer.text);
        });
    ConsoleInput::Hooks hooks;
    hooks.take = [this](const ConsoleInput::Line& line, const ConsoleInput::Answered& answered) {
        m_console.Take(line, answered);
    };
    hooks.ended = [this] {
        InputEnded();
    };
    m_input = std::make_unique<ConsoleInput>(STDIN_FILENO, m_driver, std::move(hooks));
    m_service.Ready(m_house.name + " at " + m_server.Address());
    m_driver.Run();
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
    if (m_isInputEnded && !m_playing.Current())
        End();
}

void Controller::End() {
    if (std::exchange(m_isEnding, true))
        return;
    m_patience.Start(kPatience, [this] {
        m_log.Error("Not everything could be ended in order; ending all the same");
        m_driver.Stop();
    });
    m_service.Stopping();
    m_server.Close();
    m_stillToDo = 2;
    m_announcements.Check();
    m_announcements.Save([this](const std::string& error) {
        if (!error.empty())
            m_log.Error("The announcements could not be saved: " + error);
        StopWhenDone();
    });
    m_agent.Stop();
    m_popups.HideAll();
    for (auto& [id, room] : m_rooms)
        room.RestoreVideoState();
    m_audio.Close([this] { StopWhenDone(); });
    m_playing.AgentStopped();
}

void Controller::StopWhenDone() {
    if (--m_stillToDo == 0)
        m_store->WhenTried([this] { m_driver.Stop(); });
}

} // namespace controller
