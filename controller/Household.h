#pragma once

#include "controller/HouseSpeech.h"
#include "controller/PageSpeakers.h"
#include "controller/SoundAddresses.h"
#include "controller/agent/AgentHost.h"
#include "controller/agent/DeviceManager.h"
#include "controller/agent/DigitalAudio.h"
#include "controller/agent/NowPlaying.h"
#include "controller/agent/RoomProxy.h"
#include "controller/announcements/Announcements.h"
#include "controller/announcements/HistoryRecorder.h"
#include "controller/announcements/PassingSounds.h"
#include "controller/api/ApiContext.h"
#include "controller/audio/AudioEngine.h"
#include "controller/audio/BorrowGuard.h"
#include "controller/audio/Borrowings.h"
#include "controller/driver/DriverThread.h"
#include "controller/driver/Worker.h"
#include "controller/events/LogToFeed.h"
#include "controller/house/House.h"
#include "controller/media/SoundFinder.h"
#include "controller/state/DataFolder.h"
#include "controller/state/SoundLevelRow.h"
#include "controller/state/StateStore.h"

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace controller {

/// The house at work: everything but its faces to people and network, in the order of its construction. The
/// thread that makes it is the driver thread.
class Household {
public:
    struct Options {
        std::filesystem::path module;
        bool isRecovering = false;             ///< sets a damaged database aside
        audio::ISoundEngine* engine = nullptr; ///< borrowed for life; null: one of its own, which is heard
        std::vector<std::string> guard = {};   ///< what runs the guard of what is borrowed; empty: nothing
    };

    /// Opens everything. `log` is borrowed for life. Throws `std::runtime_error`, which says what is wrong
    /// and what to do.
    Household(House house, Options options, Log& log);
    Household(const Household&) = delete;
    Household& operator=(const Household&) = delete;
    ~Household() = default;

    /// What faces show and drive.
    [[nodiscard]] ControllerParts Parts();

    /// Puts back what an end without warning has left behind, and starts the agent; once, when the faces are
    /// there that hear of it. Throws as the constructor does.
    void Start();

    /// Says where players in the house fetch their sounds; before `Start`.
    void ServeSoundsAt(SoundAddresses::Served served) { m_addresses.ServeAt(served); }

    /// Whether something plays, or waits for that.
    [[nodiscard]] bool IsBusy() const { return m_playing.Current() || !m_queue.Waiting().empty(); }

    /// Stops the agent, gives every room back, and calls back when sound and disk have taken it; they may
    /// never. Once.
    void End(std::function<void()> onEnded);

private:
    struct Opened {
        std::unique_ptr<StateDatabase> database;
        StoredState state;
    };

    [[nodiscard]] Opened Open() const;
    void TakeFirstSounds(Opened& opened) const;
    void WriteBorrowed(const std::vector<audio::Borrowed>& entries, WriteDone done);
    void ForgetGoneSounds(Opened& opened) const;
    [[nodiscard]] audio::ISoundEngine& Engine();
    [[nodiscard]] bool IsUrgent() const;
    [[nodiscard]] std::vector<Variables::Variable> VariablesAtStart() const;
    [[nodiscard]] std::vector<RoomVolumes::Room> RoomsAtStart() const;
    [[nodiscard]] RoomVolumes::Parts VolumeParts();
    [[nodiscard]] DigitalAudio::Parts AudioParts();
    [[nodiscard]] DeviceManager::Hooks DeviceHooks();
    [[nodiscard]] PlayQueue::Parts QueueParts();
    [[nodiscard]] HistoryRecorder::Parts HistoryParts();
    [[nodiscard]] OutputDesk Outputs();
    void PrepareSound(const Announcement& announcement, const std::function<void()>& ready);
    [[nodiscard]] SoundLevels::Parts LevelParts();
    [[nodiscard]] static SoundLevelRow RowOf(const SoundLevels::Entry& entry);

    void FindSound(const std::string& path, const DigitalAudio::Found& found);
    void ConnectAgent();
    void StartAgent();
    void StartQueue();
    void Measure(const std::string& file);
    void AnnouncementEnded();
    void SoundRemoved(const std::string& name);
    void RemoveFile(const std::string& name);

    const House m_house;
    const Options m_options;
    Log& m_log;
    DriverThread m_driver;
    EventFeed m_feed;
    LogToFeed m_logToFeed;
    DataFolder m_dataFolder;
    Opened m_opened;
    StateStore m_store;
    Variables m_variables;
    HouseSpeech m_speech;
    Popups m_popups;
    ScreenSpeakers m_speakers;
    PageSpeakers m_pages{m_speakers};
    Timers m_timers;
    NowPlaying m_playing;
    audio::BorrowGuard m_guard;
    audio::Borrowings m_borrowings;
    SoundAddresses m_addresses;
    std::optional<audio::AudioEngine> m_ownEngine;
    audio::ISoundEngine& m_engine;
    RoomVolumes m_volumes;
    SoundLevels m_levels;
    SoundFinder m_sounds;
    InstanceRegistry m_services;
    DigitalAudio m_audio;
    std::map<std::uint32_t, RoomProxy> m_rooms;
    DeviceManager m_devices;
    DriverHost m_driverHost;
    AgentHost m_agent;
    Announcements m_announcements;
    PlayProgress m_progress;
    PlayQueue m_queue;
    PlayStop m_stop;
    PassingSounds m_passing;
    HistoryRecorder m_history;
    EventFeed::Subscription m_ends;
    bool m_isEnding = false;
    Worker m_measuring; ///< looks how long sounds are, and takes those away that were heard once
};

} // namespace controller
