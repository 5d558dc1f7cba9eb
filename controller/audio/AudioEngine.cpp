#include "controller/audio/AudioEngine.h"

#include "controller/audio/AudioEngineParts.h"
#include "controller/audio/Gst.h"
#include "controller/audio/HealthWatch.h"
#include "controller/audio/OutputSearch.h"
#include "controller/audio/snapcast/SnapcastDesk.h"

#include <algorithm>
#include <atomic>
#include <utility>

namespace controller::audio {

namespace {

constexpr std::chrono::milliseconds kTick{50};

} // namespace

AudioEngine::AudioEngine(std::vector<RoomConfig> rooms, EngineServices services, EngineLimits limits)
    : m_context(std::make_shared<EngineContext>(WithHealth(std::move(services)), limits)) {
    StartGstreamer();
    m_context->snapcast = std::make_shared<SnapcastDesk>(m_context->mailbox);
    for (RoomConfig& room : rooms) {
        const std::uint32_t id = room.id;
        m_rooms[id] = std::make_unique<RoomOutput>(std::move(room), m_context, [this] { PostRoomChange(); });
    }
    if (Borrowings* const borrowings = m_context->services.borrowings) {
        m_context->pulse->Begin(m_context->services.driver, *borrowings);
        m_context->snapcast->Begin(m_context->services.driver, m_context->services.log, *borrowings);
    }
    const EngineServices& with = m_context->services;
    if (with.pages != nullptr && with.addresses != nullptr)
        m_context->pages->Begin(with.driver, *with.pages, *with.addresses);
    // One tick waits on the driver thread at most, however slow that is.
    const auto isWaiting = std::make_shared<std::atomic<bool>>(false);
    m_ticker = std::make_unique<Ticker>(kTick, [this, mailbox = m_context->mailbox, isWaiting] {
        if (!isWaiting->exchange(true))
            mailbox->Post([this, isWaiting] {
                *isWaiting = false;
                OnTick();
            });
    });
    if (m_context->services.roomHealth)
        WatchHealth();
}

AudioEngine::~AudioEngine() {
    m_health = nullptr;
    m_search = nullptr;
    CloseStream({});
    m_ticker = nullptr;
    m_context->mailbox->Close();
    (void)m_context->workers.Wait(m_context->limits.closing); // What hangs longer is left behind.
    m_context->houses->Close();
    m_context->pulse->Close();
    m_context->snapcast->Close();
    m_context->pages->Close();
}

void AudioEngine::OpenStream(OnReady onReady) {
    if (m_stream && m_try)
        EndTry("an announcement has begun");
    if (m_stream) {
        m_context->services.log.Warning("a stream was still open; it is closed for the next one");
        CloseStream({});
    }
    m_stream = std::make_unique<Stream>();
    m_stream->timeline = std::make_shared<Timeline>();
    m_stream->take = ++m_takes;
    // A place that is tried is no announcement; one that was may still be closing.
    const bool isTried = m_try && !m_try->isOver;
    m_stream->isUrgent = !isTried && m_context->services.isUrgent && m_context->services.isUrgent();
    if (m_health)
        m_health->Hold();
    AfterTry([this, take = m_takes, onReady = std::move(onReady)] {
        if (m_stream && m_stream->take == take && onReady)
            onReady();
    });
    SwitchTicker();
}

void AudioEngine::AddRoom(std::uint32_t roomId) {
    const auto room = m_rooms.find(roomId);
    if (!m_stream || room == m_rooms.end()) {
        m_context->services.log.Warning("room " + std::to_string(roomId) +
                                        (m_stream ? " is not in this house" : ": no stream is open"));
        return;
    }
    if (!m_stream->rooms.insert(roomId).second)
        return;
    if (m_stream->joining.empty())
        PostJoin();
    m_stream->joining.insert(roomId);
}

void AudioEngine::PostJoin() {
    m_context->mailbox->Post([this, take = m_stream->take] {
        if (!m_stream || m_stream->take != take)
            return;
        JoinWaiting(IScheduler::kTurn);
        if (!m_stream->joining.empty())
            PostJoin();
    });
}

/// Lets rooms join for so long.
void AudioEngine::JoinWaiting(std::chrono::steady_clock::duration turn) {
    const auto start = std::chrono::steady_clock::now();
    std::set<std::uint32_t>& joining = m_stream->joining;
    while (!joining.empty() && std::chrono::steady_clock::now() - start <= turn) {
        const std::uint32_t id = *joining.begin();
        joining.erase(joining.begin());
        m_rooms.at(id)->Join(m_stream->timeline, m_stream->take, m_stream->isUrgent);
    }
}

void AudioEngine::RemoveRoom(std::uint32_t roomId) {
    if (!m_stream || m_stream->rooms.erase(roomId) == 0)
        return;
    m_stream->joining.erase(roomId);
    RoomOutput& room = *m_rooms.at(roomId);
    if (m_play && room.HasHeardClip())
        m_play->heard.insert(roomId);
    room.Leave();
    OnRoomChanged();
}

void AudioEngine::SetVolume(std::uint32_t roomId, unsigned volume) {
    const auto room = m_rooms.find(roomId);
    if (room != m_rooms.end())
        room->second->SetVolume(volume);
}

unsigned AudioEngine::Volume(std::uint32_t roomId) const {
    const auto room = m_rooms.find(roomId);
    return room == m_rooms.end() ? 0 : room->second->Config().volume;
}

void AudioEngine::CloseStream(OnClosed onClosed) {
    if (m_stream) {
        if (m_play)
            FinishPlay("the stream was closed", {});
        m_stream = nullptr;
        for (const auto& [id, room] : m_rooms)
            room->Leave();
        if (m_health)
            m_health->Resume();
    }
    PendingClose pending{std::move(onClosed), {}};
    for (const auto& [id, room] : m_rooms)
        if (room->Closing())
            pending.players.emplace_back(room.get(), room->Closing());
    m_closings.push_back(std::move(pending));
    AnswerClosed();
    SwitchTicker();
}

void AudioEngine::AnswerClosed() {
    const auto isClosed = [](const PendingClose& pending) {
        return std::none_of(pending.players.begin(), pending.players.end(),
                            [](const auto& player) { return player.first->Closing() == player.second; });
    };
    for (const PendingClose& pending : m_closings)
        if (pending.onClosed && isClosed(pending))
            m_context->mailbox->Post(pending.onClosed);
    m_closings.erase(std::remove_if(m_closings.begin(), m_closings.end(), isClosed), m_closings.end());
}

/// Many rooms change together, and what follows looks at all of them: once is enough.
void AudioEngine::PostRoomChange() {
    if (!std::exchange(m_isChangePosted, true))
        m_context->mailbox->Post([this] {
            m_isChangePosted = false;
            OnRoomChanged();
        });
}

void AudioEngine::OnRoomChanged() {
    if (m_play)
        CheckPlay();
    AnswerClosed();
    SwitchTicker();
}

void AudioEngine::OnTick() {
    for (const auto& [id, room] : m_rooms)
        room->CheckTime();
}

void AudioEngine::SwitchTicker() {
    m_ticker->Switch(m_stream != nullptr || std::any_of(m_rooms.begin(), m_rooms.end(), [](const auto& room) {
                         return room.second->Closing() != nullptr;
                     }));
}

} // namespace controller::audio
