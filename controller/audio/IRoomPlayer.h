#pragma once

#include "controller/audio/AudioEngine.h"

#include <functional>
#include <string>

namespace controller::audio {

/// What a room's player has to say. Called on any thread, one at a time, Gone last.
struct PlayerEvent {
    enum class Kind {
        Late,  ///< Runs, but a clip had begun before.
        Ended, ///< Its output has played everything.
        Failed,
        Gone ///< It is closed, and holds nothing any more.
    };
    Kind kind = Kind::Gone;
    RoomTrouble::Kind trouble = RoomTrouble::Kind::Failed;
    std::string reason;
};

/// How one room is heard for one stream: opens the room's output, plays there what the timeline has for it,
/// closes. What may block happens on threads of its own, which keep it alive, so that what never returns can
/// be left behind: drop the pointer. Operations: any thread, they never block.
class IRoomPlayer {
public:
    using OnEvent = std::function<void(const PlayerEvent&)>;

    virtual ~IRoomPlayer() = default;

    /// Opens the output and plays. Once.
    /// @throws std::system_error when there is no thread for it.
    virtual void Start(OnEvent onEvent) = 0;

    virtual void SetVolume(unsigned volume) = 0;

    /// Ends the sound, lets the output play what it has, closes it.
    virtual void Stop() = 0;

    /// Closes the output at once, whatever it still has to play.
    virtual void Abort() = 0;
};

} // namespace controller::audio
