#pragma once

#include "controller/agent/AgentHost.h"
#include "controller/agent/DeviceManager.h"
#include "controller/agent/DigitalAudio.h"
#include "controller/agent/NowPlaying.h"
#include "controller/agent/RoomProxy.h"
#include "controller/announcements/Announcements.h"
#include "controller/api/ApiServer.h"
#include "controller/audio/AudioEngine.h"
#include "controller/console/Console.h"
#include "controller/console/ConsoleView.h"
#include "controller/driver/DriverThread.h"
#include "controller/events/LogToFeed.h"
#include "controller/history/HistoryRecorder.h"
#include "controller/house/House.h"
#include "controller/media/SoundFinder.h"
#include "controller/running/ServiceManager.h"
#include "controller/state/DataFolder.h"

#include <boost/asio/signal_set.hpp>

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace controller {

/// The controller of one house: everything that lives as long as the program, in the order of its
/// construction.
class Controller {
public:
    struct Options {
        std::filesystem::path module;
        std::vector<std::uint32_t> play; ///< announcements to play at the start, one after another
        bool isRecovering = false;       ///< sets a damaged database aside
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
    struct Opened {
        std::unique_ptr<StateDatabase> database;
        StoredState state;
    };

    [[nodiscard]] Opened Open() const;
    [[nodiscard]] std::vector<Variables::Variable> VariablesAtStart() const;
    [[nodiscard]] std::vector<RoomVolumes::Room> RoomsAtStart() const;
    [[nodiscard]] audio::EngineServices EngineServices();
    [[nodiscard]] DigitalAudio::Parts AudioParts();
    [[nodiscard]] ControllerParts ServerParts();

    void ConnectAgent();
    void AnnouncementEnded();
    void Greet();
    void Print(const std::string& line);
    void InputEnded();
    void EndWhenIdle();
    void End();
    void StopWhenDone();

    const House m_house;
    const Options m_options;
    Log& m_log;
    DriverThread m_driver;
    EventFeed m_feed;
    LogToFeed m_logToFeed;
    DataFolder m_dataFolder;
    Opened m_opened;
    std::unique_ptr<StateStore> m_store;
    Variables m_variables;
    Popups m_popups;
    Timers m_timers;
    NowPlaying m_playing;
    audio::AudioEngine m_engine;
    RoomVolumes m_volumes;
    SoundFinder m_sounds;
    InstanceRegistry m_services;
    DigitalAudio m_audio;
    std::map<std::uint32_t, RoomProxy> m_rooms;
    DeviceManager m_devices;
    DriverHost m_driverHost;
    AgentHost m_agent;
    Announcements m_announcements;
    HistoryRecorder m_history;
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
    int m_stillToDo = 0; ///< before the program may end
};

} // namespace controller
