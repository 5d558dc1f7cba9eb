#pragma once

#include "controller/Household.h"
#include "controller/api/ApiServer.h"
#include "controller/console/Console.h"
#include "controller/console/ConsoleView.h"
#include "controller/driver/LineWriter.h"
#include "controller/running/ServiceManager.h"

#include <boost/asio/signal_set.hpp>

#include <cstdint>
#include <memory>
#include <vector>

namespace controller {

/// The controller of one house: the house at work, its faces to network, console and service manager, and its
/// end.
class Controller {
public:
    struct Options {
        Household::Options household;
        std::vector<std::uint32_t> play; ///< announcements to play at the start, one after another
        bool isStaying = false;          ///< goes on at the end of input
    };

    /// Opens everything and creates the agent. Throws `std::runtime_error`, which says what is wrong and what
    /// to do.
    Controller(House house, Options options, Log& log);
    Controller(const Controller&) = delete;
    Controller& operator=(const Controller&) = delete;
    ~Controller() = default;

    /// Runs until a signal, `quit`, or the end of input.
    void Run();

private:
    void Print(const std::string& line);
    void Greet();
    void InputEnded();
    void EndWhenIdle();
    void End();

    const Options m_options;
    Log& m_log;
    LineWriter m_output; ///< standard output
    Household m_household;
    const ControllerParts m_parts;
    ApiServer m_server;
    ServiceManager m_service;
    ConsoleView m_view;
    Console m_console;
    EventFeed::Subscription m_ends;
    boost::asio::signal_set m_signals;
    Alarm m_patience;
    std::unique_ptr<ConsoleInput> m_input;
    bool m_isInputEnded = false;
    bool m_isEnding = false;
};

} // namespace controller
