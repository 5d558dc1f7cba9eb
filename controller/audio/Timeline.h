#pragma once

#include "controller/audio/Clip.h"
#include "controller/audio/Gst.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace controller::audio {

/// One room's place on the timeline. Guarded by the timeline.
struct RoomSlot {
    enum class State { Opening, Running, Done };
    std::uint32_t roomId = 0;
    State state = State::Opening;
    bool isAwaited = true;                       ///< A clip waits for it while it opens.
    std::chrono::steady_clock::time_point added; ///< When its opening began.
    std::chrono::steady_clock::time_point opened;
    std::int64_t next = 0; ///< The first frame that it has not been given yet.
    bool hasBegun = false;
    bool hasOwnPace = false; ///< A device with a buffer of its own: takes sound ahead of the clock.
    bool isStopping = false;
    bool hasFaded = false;
    bool isAborted = false;
    std::int64_t fadeFrom = -1;   ///< The frame from which the clip fades out here; -1: it does not.
    std::condition_variable turn; ///< For who waits for the next one: of two hundred rooms, one is woken.
};

/// A clip's place on the timeline.
struct Placement {
    std::shared_ptr<Clip> clip;
    std::int64_t start = 0; ///< its first frame
    bool isFadingOut = false;
};

/// What a room is to play next.
struct Turn {
    enum class Kind { Block, LastBlock, End, Abort };
    Kind kind = Kind::Block;
    std::int64_t frame = 0;     ///< On the timeline.
    std::shared_ptr<Clip> clip; ///< Null: silence.
    std::int64_t clipPosition =
        0;              ///< What `frame` is in the clip; negative: the clip begins within the block.
    bool isGap = false; ///< Frames before this one were skipped.
    float fade = 1.0F;  ///< What a stop leaves of the volume at the block's end.
};

/// The one clock of a stream's rooms, and where on it the clip stands. Frame 0 is the stream's opening, in
/// every room. Rooms play silence block by block; a clip begins at a block that no room has been given yet,
/// so that all of them start it together. Any thread.
class Timeline final {
public:
    using Clock = std::chrono::steady_clock;

    Timeline();

    [[nodiscard]] GstClock* GetClock() const { return m_clock.get(); }
    [[nodiscard]] GstClockTime BaseTime() const { return m_base; }

    /// The room's output begins to open; a clip waits for it if it `isAwaited`.
    [[nodiscard]] std::shared_ptr<RoomSlot> AddRoom(std::uint32_t roomId, bool isAwaited = true);

    /// The room plays from now on. False when a clip has begun without it.
    bool SetRunning(RoomSlot& slot, bool hasOwnPace);

    /// The room has played everything.
    void SetDone(RoomSlot& slot);

    /// The room belongs to the stream no longer; its output ends after a short fade.
    void Remove(const std::shared_ptr<RoomSlot>& slot);

    /// The room's output is about to be torn down: whoever waits for its turn returns.
    void Abort(const std::shared_ptr<RoomSlot>& slot);

    /// Places the clip `lead` frames behind the first block that no room has been given. Waits first for the
    /// awaited rooms that are opening, for each no longer than `readiness` since it was added, and for one
    /// that runs.
    /// Returns when the clip begins, or nothing when no room is left or the clip was abandoned.
    [[nodiscard]] std::optional<Clock::time_point>
    StartClip(std::shared_ptr<Clip> clip, std::int64_t lead, std::chrono::milliseconds readiness);

    /// The clip fades out, in each room from its next block on, and ends. False when none has been placed.
    bool FadeOut();

    /// Waits until it is the room's turn to be given a block, and says which.
    [[nodiscard]] Turn NextTurn(RoomSlot& slot);

    /// For who feeds rooms without their turns: the clip, or nothing as long as there is none.
    [[nodiscard]] std::optional<Placement> Placed() const;

    /// Calls when a clip is placed, and when it begins to fade out, on the thread that does it.
    void OnPlaced(std::function<void()> listener);

    /// The room, which takes no turns, has been given all that comes before `next`.
    void SetGiven(RoomSlot& slot, std::int64_t next);

    [[nodiscard]] Clock::time_point TimeAt(std::int64_t frame) const;

    [[nodiscard]] bool HasClip() const;
    [[nodiscard]] RoomSlot::State StateOf(const RoomSlot& slot) const;

    /// Whether the room opened within `readiness` of being added; nothing while that is open.
    [[nodiscard]] std::optional<bool> WasReady(const RoomSlot& slot,
                                               std::chrono::milliseconds readiness) const;

    /// Whether the clip's last sample has passed in the room, be its output still playing silence.
    [[nodiscard]] bool HasPlayedClip(const RoomSlot& slot) const;

    /// Whether the room has taken nothing for so long, although it runs.
    [[nodiscard]] bool IsStalled(const RoomSlot& slot, std::chrono::milliseconds limit) const;

private:
    void TakeOut(const std::shared_ptr<RoomSlot>& slot);
    [[nodiscard]] std::int64_t Now() const;
    [[nodiscard]] bool MayStart(std::chrono::milliseconds readiness) const;
    [[nodiscard]] bool HasEnded(const RoomSlot& slot) const;
    void Place(RoomSlot& slot, Turn& turn) const;
    void Fade(RoomSlot& slot, bool hasHeard, Turn& turn) const;

    GstPtr<GstClock> m_clock;
    GstClockTime m_base;
    mutable std::mutex m_mutex;
    std::condition_variable m_roomsChanged;
    std::vector<std::shared_ptr<RoomSlot>> m_rooms;
    std::vector<std::function<void()>> m_listeners;
    std::shared_ptr<Clip> m_clip;
    std::int64_t m_clipStart = 0;
    bool m_isFadingOut = false;
};

} // namespace controller::audio
