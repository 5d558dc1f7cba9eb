#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace controller::audio {

/// What is played: a file, and the gain that brings it to the loudness of all others.
struct PlayedSound {
    // A file is a sound that is played as it is.
    PlayedSound(std::string thePath, double theGain = 0) // NOLINT(*-explicit-*)
        : path(std::move(thePath))
        , gain(theGain) {}

    std::string path;
    double gain; ///< dB
};

/// How a Play ended.
struct PlayResult {
    std::string error; ///< Empty: the whole file was played in every room of `rooms`, or it was stopped.
    std::vector<std::uint32_t> rooms;         ///< Rooms that heard it to its last sample, ascending.
    std::chrono::microseconds startDelay{-1}; ///< Play() to the clip's first sample; -1: it never started.
    bool isStopped = false;                   ///< By StopPlay(); then `rooms` is empty.
};

/// Sound in rooms, as the rest of the controller calls it: one stream at a time.
///
/// All operations are called on the driver thread and return at once. Any order of calls is allowed. No
/// callback runs inside a call of the engine, none after its destruction. A callback may call the engine.
class ISoundEngine {
public:
    using OnReady = std::function<void()>;
    using OnDone = std::function<void(const PlayResult&)>;
    using OnClosed = std::function<void()>;

    /// These rooms will probably play the sound soon: who has to fetch it may do that now. It is played, or
    /// not, all the same.
    virtual void Prepare(const PlayedSound& /*sound*/, const std::vector<std::uint32_t>& /*roomIds*/) {}

    /// Opens the stream of one announcement, then calls onReady. A stream that is still open is closed first
    /// (its Play ends with an error). onReady does not come if the stream is closed before.
    virtual void OpenStream(OnReady onReady) = 0;

    /// Opens the room's output for the stream, in its turn behind others that were added; silence plays there
    /// until the clip starts. Without a stream, for an unknown room or one that is in already: logged,
    /// nothing else.
    virtual void AddRoom(std::uint32_t roomId) = 0;

    /// Takes the room out of the stream: its sound ends now, in good order. The last room's removal ends a
    /// Play, with an error unless a room has heard the clip to its last sample.
    virtual void RemoveRoom(std::uint32_t roomId) = 0;

    /// The room's volume, 0 to 100 (more is 100), from now on and for later streams too.
    virtual void SetVolume(std::uint32_t roomId, unsigned volume) = 0;

    /// Plays the sound in all rooms of the stream, whole, from one moment on: lead silence (the
    /// longest that a room asks for), clip, at least 100 ms of silence. onDone comes exactly once: when the
    /// last room has played its last sample; or with an error as soon as it is known that the file is missing
    /// or not playable, that there is no stream or no room, that another Play is still running (which goes
    /// on), that every room failed, or that the stream was closed.
    virtual void Play(const PlayedSound& sound, OnDone onDone) = 0;

    /// What plays fades out over 50 ms in every room, and silence follows; its onDone comes when the last
    /// room has played that. A clip that has not begun never begins. Without a Play nothing happens.
    virtual void StopPlay() = 0;

    /// Ends the stream: sound stops, outputs close, then onClosed is called, unless it is empty. Without a
    /// stream onClosed is called all the same.
    virtual void CloseStream(OnClosed onClosed) = 0;

protected:
    ~ISoundEngine() = default;
};

} // namespace controller::audio
