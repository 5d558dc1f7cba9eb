#pragma once

#include "controller/audio/Health.h"
#include "controller/audio/ISoundEngine.h"
#include "controller/audio/OutputDescription.h"
#include "controller/audio/home_assistant/HouseLimits.h"
#include "controller/driver/IScheduler.h"
#include "controller/driver/Log.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace controller::audio {

class Borrowings;
class HealthWatch;
class IPageSpeakers;
class OutputSearch;
class ISoundAddresses;
class RoomOutput;
class Ticker;
struct EngineContext;
struct FoundOutput;

/// A room that can be heard.
struct RoomConfig {
    std::uint32_t id = 0;
    std::string name;
    OutputDescription output;
    std::chrono::milliseconds leadSilence{0}; ///< Silence before a clip, for devices that wake up slowly.
    unsigned volume = 100;                    ///< 0 to 100, until SetVolume says otherwise.
};

/// A room's output that does not do as it should. The other rooms play on.
struct RoomTrouble {
    enum class Kind {
        Refused, ///< The output could not be opened.
        Failed,  ///< It was open, and reported an error.
        Hanging, ///< It did not answer in time and was given up.
        Silent,  ///< It has no device: silence plays there, in real time, and nobody hears it.
        Late     ///< It opened after the clip had begun: it plays in step, but its beginning is missing.
    };
    std::uint32_t roomId = 0;
    Kind kind = Kind::Failed;
    std::string reason;
};

/// What the engine needs of its owner, for its whole life.
struct EngineServices {
    IScheduler& driver;
    Log& log;
    std::function<void(const RoomTrouble&)> roomTrouble; ///< Called on the driver thread. May be empty.
    Borrowings* borrowings = nullptr;                    ///< Null: nothing of other programs is touched.
    ISoundAddresses* addresses = nullptr;                ///< Null: nobody can fetch a sound.
    /// Called on the driver thread when it has become known, or has changed, whether a room would be heard.
    /// Empty: the rooms' outputs are not asked.
    std::function<void(std::uint32_t roomId, const Health& health)> roomHealth = nullptr;
    IPageSpeakers* pages = nullptr; ///< Null: no screen's page plays.
    /// Whether the announcement is urgent for which a stream is opened; empty: none is.
    std::function<bool()> isUrgent = nullptr;
};

/// Bounds of waiting. The defaults are for people; tests and slow machines may stretch them.
struct EngineLimits {
    std::chrono::milliseconds readiness{500}; ///< Since AddRoom: how long Play waits for a room that opens.
    std::chrono::milliseconds opening{5000};  ///< An output that has not opened by then hangs.
    std::chrono::milliseconds stall{1500};    ///< An output that takes no sound for so long hangs.
    std::chrono::milliseconds closing{3000};  ///< An output that has not closed by then hangs.
    HouseLimits houses;                       ///< of Home Assistant and its players
    unsigned hangingPerRoom = 4;              ///< Given-up outputs of a room before it is refused at once.
};

/// Sound in rooms: one stream at a time, one player for each room of it, all of them on one clock.
///
/// Whatever may block runs on threads of the engine, and results come back as posted work.
class AudioEngine final : public ISoundEngine {
public:
    /// Room ids are unique. Outputs are opened when a stream reaches them, not before.
    AudioEngine(std::vector<RoomConfig> rooms, EngineServices services, EngineLimits limits = {});

    /// Closes the stream and waits until its outputs are closed, at most `closing`.
    ~AudioEngine();

    AudioEngine(const AudioEngine&) = delete;
    AudioEngine& operator=(const AudioEngine&) = delete;

    void Prepare(const PlayedSound& sound, const std::vector<std::uint32_t>& roomIds) override;
    void OpenStream(OnReady onReady) override;
    void AddRoom(std::uint32_t roomId) override;
    void RemoveRoom(std::uint32_t roomId) override;
    void SetVolume(std::uint32_t roomId, unsigned volume) override;
    void Play(const PlayedSound& sound, OnDone onDone) override;
    void StopPlay() override;
    void CloseStream(OnClosed onClosed) override;

    /// Looks for places where a room could be heard.
    void FindOutputs(const std::function<void(const std::vector<FoundOutput>&)>& found);

    /// Told why the sound was not heard; empty: it was.
    using OnTried = std::function<void(const std::string& trouble)>;

    /// Plays the sound at a place that is no room. Refused while a stream is open or another place is tried;
    /// a stream that is opened ends it.
    void TryOutput(const OutputDescription& output,
                   const PlayedSound& sound,
                   unsigned volume,
                   const OnTried& onTried);

    /// The room's volume, 0 for an unknown room.
    [[nodiscard]] unsigned Volume(std::uint32_t roomId) const;

private:
    struct Stream;
    struct CurrentPlay;
    struct PendingClose;
    struct Try;

    void PostJoin();
    void JoinWaiting(std::chrono::steady_clock::duration turn);
    void RenewStream();
    void StartPlayback(const PlayedSound& sound);
    void OnStarted(unsigned playNumber, std::chrono::steady_clock::time_point begin);
    void CheckPlay();
    void FinishPlay(const std::string& error, std::vector<std::uint32_t> rooms);
    [[nodiscard]] std::string WhyNoRoom() const;
    void AnswerClosed();
    void PostRoomChange();
    void OnRoomChanged();
    void OnTick();
    void SwitchTicker();
    [[nodiscard]] EngineServices WithHealth(EngineServices services);
    void WatchHealth();
    [[nodiscard]] bool AskKind(const std::string& kind,
                               const std::vector<std::string>& texts,
                               const std::function<void(std::vector<Health>)>& answer);

    void FindOf(const std::string& kind, const std::function<void(const std::vector<FoundOutput>&)>& told);
    void EndTry(const std::string& trouble);
    void TryClosed();
    void AfterTry(std::function<void()> task);

    /// Of no room in a house, whose ids begin with 1.
    static constexpr std::uint32_t kTriedRoom = 0;

    const std::shared_ptr<EngineContext> m_context;
    std::map<std::uint32_t, std::unique_ptr<RoomOutput>> m_rooms;
    std::unique_ptr<Stream> m_stream;    ///< Null: none is open.
    std::unique_ptr<CurrentPlay> m_play; ///< Null: nothing plays.
    std::vector<PendingClose> m_closings;
    unsigned m_takes = 0;
    unsigned m_plays = 0;
    bool m_isChangePosted = false;
    std::unique_ptr<Ticker> m_ticker;
    std::unique_ptr<HealthWatch> m_health; ///< Null: nobody wants to know.
    std::unique_ptr<OutputSearch> m_search;
    std::unique_ptr<Try> m_try; ///< Null: no place is tried.
    std::vector<std::unique_ptr<RoomOutput>> m_hangingTries;
};

} // namespace controller::audio
