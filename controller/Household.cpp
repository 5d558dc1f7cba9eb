#include "controller/Household.h"

#include "controller/announcements/AnnouncementXml.h"
#include "controller/driver/Durable.h"
#include "controller/state/SoundText.h"
#include "controller/state/StateText.h"

#include <algorithm>
#include <set>
#include <stdexcept>
#include <utility>

namespace controller {

namespace {

std::set<std::uint32_t> NavigatorIds(const House& house) {
    std::set<std::uint32_t> ids;
    for (const House::Navigator& navigator : house.navigators)
        ids.insert(navigator.id);
    return ids;
}

std::vector<audio::Borrowed> BorrowedAtStart(const BorrowedRows& rows) {
    std::vector<audio::Borrowed> entries;
    entries.reserve(rows.size());
    for (const BorrowedRow& row : rows)
        entries.push_back({row.kind, row.thing, row.property, row.before, row.set});
    return entries;
}

/// Takes those out that were there for one play alone, which has been interrupted, and not those that still
/// wait for it; as rows that take them away.
AnnouncementRows TakePassing(AnnouncementRows& rows, const QueuedRows& queue) {
    std::set<std::int64_t> waiting;
    for (const QueuedRow& row : queue)
        if (PlayQueue::IsInTime(row, std::chrono::system_clock::now()))
            waiting.insert(row.announcement);
    const auto isToStay = [&waiting](const AnnouncementRow& row) {
        return waiting.count(row.key) != 0 || !announcement_xml::HouseFromXml(row.house).isPassing;
    };
    const auto first = std::stable_partition(rows.begin(), rows.end(), isToStay);
    AnnouncementRows passing;
    for (auto row = first; row != rows.end(); ++row)
        passing.push_back({row->key, "", ""});
    rows.erase(first, rows.end());
    return passing;
}

} // namespace

Household::Household(House house, Options options, Log& log)
    : m_house(std::move(house))
    , m_options(std::move(options))
    , m_log(log)
    , m_driver(log)
    , m_logToFeed(log, m_driver, m_feed)
    , m_dataFolder(m_house.dataFolder)
    , m_opened(Open())
    , m_store(std::move(m_opened.database), m_driver)
    , m_variables(VariablesAtStart(), m_store, m_feed)
    , m_speech(m_house,
               m_dataFolder.Path(),
               m_opened.state.spokenSounds,
               {m_driver, m_feed, m_log, m_variables, m_store})
    , m_popups(m_driver, m_variables, m_feed)
    , m_speakers(PagesThatPlay(m_house))
    , m_timers(m_driver, log)
    , m_playing(m_timers, m_feed)
    , m_guard(m_options.guard, log)
    , m_borrowings(
          m_driver,
          log,
          [this](const std::vector<audio::Borrowed>& entries, WriteDone done) {
              WriteBorrowed(entries, std::move(done));
          },
          BorrowedAtStart(m_opened.state.borrowed))
    , m_engine(Engine())
    , m_volumes(RoomsAtStart(), VolumeParts())
    , m_levels(LevelParts())
    , m_sounds(m_house.mediaFolder, TestTone(m_dataFolder.Path()), m_levels, m_driver, log)
    , m_audio(AudioParts())
    , m_devices(NavigatorIds(m_house), m_popups, log, DeviceHooks())
    , m_driverHost(m_timers, log)
    , m_agent(m_options.module.string(), m_services, m_driverHost, log)
    , m_announcements({m_agent, m_store, m_driver, m_feed, log})
    , m_progress(m_announcements, m_feed)
    , m_queue(QueueParts())
    , m_stop({m_playing, m_audio, m_announcements, m_queue, m_feed, m_driver})
    , m_passing(m_opened.state.passingSounds,
                {m_announcements, m_feed, m_driver,
                 [this](const std::string& file) {
                     RemoveFile(file);
                 }})
    , m_history(m_feed, HistoryParts())
    , m_ends(m_feed.Subscribe([this](const Event& event) {
        if (std::holds_alternative<events::AnnouncementEnded>(event.data))
            AnnouncementEnded();
        else if (const auto* removed = std::get_if<events::MediaRemoved>(&event.data))
            SoundRemoved(removed->name);
    })) {}

void Household::Start() {
    m_volumes.Recover(m_opened.state.journal);
    ConnectAgent();
    StartAgent();
    StartQueue();
}

Household::Opened Household::Open() const {
    for (const auto& folder : {m_dataFolder.Path(), m_house.mediaFolder})
        durable::Draft::Sweep(folder);
    if (m_options.isRecovering)
        for (const std::string& line : StateDatabase::Recover(m_dataFolder.Path()))
            m_log.Notice(line);
    Opened opened;
    opened.database = std::make_unique<StateDatabase>(m_dataFolder.Path());
    opened.state = opened.database->Read();
    if (!opened.state.areAnnouncementsKept && !m_house.firstAnnouncements.empty())
        TakeFirstSounds(opened);
    ForgetGoneSounds(opened);
    return opened;
}

/// Beside the first announcements stand the sounds that they have spoken, and what is said of others.
void Household::TakeFirstSounds(Opened& opened) const {
    const SoundText sounds = sound_text::Read(m_house.firstAnnouncements);
    opened.database->Together([&](StateDatabase& together) { sound_text::Write(sounds, together); });
    opened.state = opened.database->Read();
}

std::vector<Variables::Variable> Household::VariablesAtStart() const {
    std::vector<Variables::Variable> variables;
    for (const House::Variable& variable : m_house.variables) {
        const auto stored = m_opened.state.variables.find({variable.device, variable.variable});
        variables.push_back({variable.device, variable.variable, variable.name,
                             stored != m_opened.state.variables.end() ? stored->second : variable.value});
    }
    return variables;
}

DeviceManager::Hooks Household::DeviceHooks() {
    return {[this] { m_announcements.StateInvalidated(); },
            [this] { return m_playing.Current() ? m_playing.Current()->show : 0; },
            [this] {
                return m_stop.RefusePopup();
            }};
}

HistoryRecorder::Parts Household::HistoryParts() {
    return {[this](std::uint32_t id) { return m_announcements.NameOf(id); },
            [this](const HistoryEntry& entry) { m_store.AddHistory(entry); },
            [this] {
                return m_isEnding;
            }};
}

ControllerParts Household::Parts() {
    return {m_house,
            m_driver,
            m_feed,
            m_announcements,
            m_queue,
            m_stop,
            m_progress,
            m_popups,
            m_speakers,
            m_variables,
            m_volumes,
            m_speech.Voices(),
            m_speech.Sounds(),
            m_passing,
            m_addresses.Sounds(),
            m_levels,
            [this](const SoundLevels::Entry& entry, WriteDone done) {
                m_store.WriteSoundLevel(RowOf(entry), std::move(done));
            },
            m_store,
            m_log,
            m_options.module.string(),
            m_dataFolder.Path() / "thumbnails",
            [this] { return !m_isEnding; },
            Outputs()};
}

void Household::ConnectAgent() {
    for (const House::Room& room : m_house.rooms) {
        auto& proxy = m_rooms.try_emplace(room.id, room.id, m_audio, m_volumes, m_feed).first->second;
        m_devices.AddRoom(room.id, proxy);
    }
    m_services.RegisterInterface(IDeviceManager::kGuid, static_cast<IDeviceManager*>(&m_devices), 1);
    m_services.RegisterInterface(ITimerManager::kGuid, static_cast<ITimerManager*>(&m_timers), 1);
    m_services.RegisterInterface(IDigitalAudio::kGuid, static_cast<IDigitalAudio*>(&m_audio), 1);
    m_driverHost.SetListeners({[this](std::uint32_t id) { m_playing.EventFired(id); },
                               [this] { m_announcements.StateInvalidated(); },
                               [this](const std::string& /*name*/) {
                                   m_agent.HandlerMissing();
                               }});
    m_timers.SetDriverTimerListener([this] { m_playing.DriverTimerDone(); });
}

void Household::StartAgent() {
    const bool areKept = m_opened.state.areAnnouncementsKept;
    const bool areFirst = !areKept && !m_house.firstAnnouncements.empty();
    AnnouncementRows rows =
        areFirst ? state_text::Read(m_house.firstAnnouncements) : std::move(m_opened.state.announcements);
    AnnouncementRows passed = TakePassing(rows, m_opened.state.queue);
    // Before anything takes their keys.
    if (!passed.empty() && areKept)
        m_store.WriteAnnouncements(std::move(passed), [](const std::string& /*error*/) {
            // They are taken away at the next start, then.
        });
    try {
        m_announcements.Begin(rows, areKept);
    } catch (const std::runtime_error& error) {
        throw UnusableDatabase(
            "The announcements in " + (m_dataFolder.Path() / StateDatabase::kFileName).string() +
            " cannot be used: " + error.what() +
            ". `announcement-controller export` writes them out as text, and `import` takes the "
            "mended text back");
    }
}

void Household::SoundRemoved(const std::string& name) {
    m_levels.Forget(name);
    m_store.RemoveSound(name, Nobody);
}

void Household::AnnouncementEnded() {
    // Rooms that were taken out of the announcement while it played get no word from the agent.
    m_audio.AnnouncementEnded();
    for (auto& [id, room] : m_rooms)
        room.RestoreVideoState();
}

void Household::End(std::function<void()> onEnded) {
    m_isEnding = true;
    m_queue.Close();
    const auto stillToDo = std::make_shared<int>(2);
    const auto stopWhenDone = [this, stillToDo, onEnded = std::move(onEnded)] {
        if (--*stillToDo == 0)
            m_store.WhenTried(onEnded);
    };
    m_announcements.Check();
    m_announcements.Save([this, stopWhenDone](const std::string& error) {
        if (!error.empty())
            m_log.Error("The announcements could not be saved: " + error);
        stopWhenDone();
    });
    m_agent.Stop();
    m_popups.HideAll();
    for (auto& [id, room] : m_rooms)
        room.RestoreVideoState();
    m_audio.Close(stopWhenDone);
    m_playing.AgentStopped();
}

} // namespace controller
