#pragma once

#include "controller/audio/OutputDescription.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace controller::audio {

class RoomOutput;
class Ticker;
struct EngineContext;

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
        Late     ///< It opened after the clip had begun: it plays in step, but its beginning is missing.
    };
    std::uint32_t roomId = 0;
    Kind kind = Kind::Failed;
    std::string reason;
};

/// How a Play ended.
struct PlayResult {
    std::string error;                        ///< Empty: the whole file was played in every room of `rooms`.
    std::vector<std::uint32_t> rooms;         ///< Rooms that played it to its last sample, ascending.
    std::chrono::microseconds startDelay{-1}; ///< Play() to the clip's first sample; -1: it never started.
};

enum class LogLevel { Error = 3, Warning = 4, Info = 6, Debug = 7 };

/// What the engine needs of its owner. `post` may be called on any thread, at any time until the engine is
/// destroyed; it runs the callable on the driver thread, later. The other two are called on the driver
/// thread only.
struct EngineServices {
    std::function<void(std::function<void()>)> post;
    std::function<void(LogLevel, const std::string&)> log;
    std::function<void(const RoomTrouble&)> roomTrouble; ///< May be empty.
};

/// Bounds of waiting. The defaults are for people; tests and slow machines may stretch them.
struct EngineLimits {
    std::chrono::milliseconds readiness{500}; ///< Since AddRoom: how long Play waits for a room that opens.
    std::chrono::milliseconds opening{5000};  ///< An output that has not opened by then hangs.
    std::chrono::milliseconds stall{1500};    ///< An output that takes no sound for so long hangs.
    std::chrono::milliseconds closing{3000};  ///< An output that has not closed by then hangs.
    unsigned hangingPerRoom = 4;              ///< Given-up outputs of a room before it is refused at once.
};

/// Sound in rooms: one stream at a time, one GStreamer pipeline for each room of it, all of them on one
/// clock.
///
/// All operations are called on the driver thread and return at once; whatever may block runs on threads of
/// the engine, and results come back through `post`. Any order of calls is allowed. No callback runs inside a
/// call of the engine, none after its destruction. A callback may call the engine.
class AudioEngine final {
public:
    using OnReady = std::function<void()>;
    using OnDone = std::function<void(const PlayResult&)>;
    using OnClosed = std::function<void()>;

    /// Room ids are unique. Outputs are opened when a stream reaches them, not before.
    AudioEngine(std::vector<RoomConfig> rooms, EngineServices services, EngineLimits limits = {});

    /// Closes the stream and waits until its outputs are closed, at most `closing`.
    ~AudioEngine();

    AudioEngine(const AudioEngine&) = delete;
    AudioEngine& operator=(const AudioEngine&) = delete;

    /// Opens the stream of one announcement, then calls onReady. A stream that is still open is closed first
    /// (its Play ends with an error). onReady does not come if the stream is closed before.
    void OpenStream(OnReady onReady);

    /// Opens the room's output for the stream; silence plays there until the clip starts. Without a stream,
    /// for an unknown room or one that is in already: logged, nothing else.
    void AddRoom(std::uint32_t roomId);

    /// Takes the room out of the stream: its sound ends now, in good order. The last room's removal ends a
    /// Play.
    void RemoveRoom(std::uint32_t roomId);

    /// The room's volume, 0 to 100 (more is 100), from now on and for later streams too.
    void SetVolume(std::uint32_t roomId, unsigned volume);

    /// The room's volume, 0 for an unknown room.
    [[nodiscard]] unsigned Volume(std::uint32_t roomId) const;

    /// Plays the file at `path` in all rooms of the stream, whole, from one moment on: lead silence (the
    /// longest that a room asks for), clip, at least 100 ms of silence. onDone comes exactly once: when the
    /// last room has played its last sample; or with an error as soon as it is known that the file is missing
    /// or not playable, that there is no stream or no room, that another Play is still running (which goes
    /// on), that every room failed, or that the stream was closed.
    void Play(const std::string& path, OnDone onDone);

    /// Ends the stream: sound stops, outputs close, then onClosed (if given) is called. Without a stream
    /// onClosed is called all the same.
    void CloseStream(OnClosed onClosed = {});

private:
    struct Stream;
    struct CurrentPlay;
    struct PendingClose;

    void RenewStream();
    void StartPlayback(const std::string& path);
    void OnStarted(unsigned playNumber, std::chrono::steady_clock::time_point begin);
    void CheckPlay();
    void FinishPlay(const std::string& error, std::vector<std::uint32_t> rooms);
    [[nodiscard]] std::string WhyNoRoom() const;
    void AnswerClosed();
    void OnRoomChanged();
    void OnTick();
    void SwitchTicker();

    const std::shared_ptr<EngineContext> m_context;
    std::map<std::uint32_t, std::unique_ptr<RoomOutput>> m_rooms;
    std::unique_ptr<Stream> m_stream;    ///< Null: none is open.
    std::unique_ptr<CurrentPlay> m_play; ///< Null: nothing plays.
    std::vector<PendingClose> m_closings;
    unsigned m_takes = 0;
    unsigned m_plays = 0;
    std::unique_ptr<Ticker> m_ticker;
};

} // namespace controller::audio
