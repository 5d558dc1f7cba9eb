#pragma once

#include "controller/agent/NowPlaying.h"
#include "controller/announcements/Announcements.h"
#include "controller/driver/Alarm.h"
#include "controller/driver/DriverOnly.h"
#include "controller/events/EventFeed.h"
#include "controller/state/QueuedRow.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <vector>

namespace controller {

/// What people have asked to be played, in front of the agent's own queue: here it can be shown, taken back
/// and moved, and it is there after a restart.
///
/// The agent is asked for the first one when it plays nothing; what reaches its own queue, by the raw
/// commands, goes before. No announcement waits twice, and none behind itself. What is there for one play is
/// removed when that is over, or when it is taken back. Driver thread only.
class PlayQueue {
public:
    using Time = std::chrono::system_clock::time_point;

    /// Makes ready what the announcement needs, before any room is touched, and calls back; at once when
    /// there is nothing to do.
    using Prepare = std::function<void(const Announcement& announcement, std::function<void()> ready)>;

    /// All are borrowed for life.
    struct Parts {
        Announcements& announcements;
        const NowPlaying& playing;
        IQueueStore& store;
        EventFeed& feed;
        IScheduler& scheduler;
        Prepare prepare;
    };

    struct Outcome {
        Announcements::Outcome asked; ///< the agent's answer, where it was asked at once
        std::uint64_t entry = 0;      ///< 0: it plays already
        bool isFull = false;          ///< as many as may wait already
    };
    using Done = std::function<void(const Outcome&)>;

    /// As many may wait.
    static constexpr std::size_t kMost = 100;
    /// What has waited so long when the program starts is not played any more.
    static constexpr std::chrono::minutes kLongestWait{10};

    explicit PlayQueue(Parts parts);

    /// Whether what was asked for then may still be played at a start.
    [[nodiscard]] static bool IsInTime(const QueuedRow& row, Time now);

    /// Takes over what waited when the program ended, and gives what is not played any more.
    [[nodiscard]] QueuedRows Begin(const QueuedRows& rows, Time now);

    /// Plays the announcement now, or when its turn comes. Tells once: when the agent has been asked, or when
    /// the disk has it that it waits, or has failed to take it.
    void Ask(std::uint32_t announcement, const Done& done);

    /// What waits, the next one first.
    [[nodiscard]] std::vector<Queued> Waiting() const;

    /// False when the entry does not wait; then `done` is not called.
    [[nodiscard]] bool Remove(std::uint64_t entry, WriteDone done);
    /// Moves the entry in front of another one, or, with 0, behind all. False when one of the two does not
    /// wait; then `done` is not called.
    [[nodiscard]] bool Move(std::uint64_t entry, std::uint64_t before, WriteDone done);

    /// The next one is being made ready, and is taken back. False when there is none such.
    bool StopPreparing();

    /// The program ends: nothing is handed over any more, and what waits stays on the disk.
    void Close();

private:
    using Place = std::deque<Queued>::iterator;

    [[nodiscard]] Place Find(std::uint64_t entry);
    [[nodiscard]] std::optional<std::uint64_t> EntryOf(std::uint32_t announcement) const;
    void Add(const Announcements::Outcome& accepted, const Done& done);
    void HandOverSoon();
    void HandOver(const Done& done = {});
    [[nodiscard]] bool IsReady(const Queued& next);
    void Ready(std::uint64_t entry);
    void Changed(WriteDone done);
    void Forget(std::uint32_t announcement);
    void Take(const Event& event);
    void Removed(std::uint32_t announcement);

    const Parts m_parts;
    std::deque<Queued> m_waiting;
    std::uint64_t m_lastEntry = 0;
    std::uint64_t m_kept = 0;          ///< the newest entry that others have been told of
    std::uint64_t m_preparing = 0;     ///< the entry that is being made ready
    std::uint64_t m_ready = 0;         ///< the entry that has been
    std::vector<std::uint32_t> m_over; ///< played since the last look
    bool m_isClosed = false;
    Alarm m_next;
    EventFeed::Subscription m_subscription;
    DriverOnly m_driverOnly;
};

} // namespace controller
