#include "controller/audio/Timeline.h"

#include "controller/audio/SoundFormat.h"

#include <algorithm>
#include <utility>

namespace controller::audio {

namespace {

constexpr std::int64_t kOwnPaceAhead = kRate / 2;
constexpr std::int64_t kMostBehind = kRate / 50;
constexpr std::chrono::milliseconds kPoll{20};

std::int64_t BlockAfter(std::int64_t frame) {
    return (frame + kBlockFrames - 1) / kBlockFrames * kBlockFrames;
}

} // namespace

// The system clock of GStreamer and steady_clock are the same monotonic one, so that waiting can be done on
// condition variables.
Timeline::Timeline() : m_clock(gst_system_clock_obtain()), m_base(gst_clock_get_time(m_clock.get())) {}

std::int64_t Timeline::Now() const {
    return FramesOf(std::chrono::nanoseconds(gst_clock_get_time(m_clock.get()) - m_base));
}

std::shared_ptr<RoomSlot> Timeline::AddRoom(std::uint32_t roomId, bool isAwaited) {
    auto slot = std::make_shared<RoomSlot>();
    slot->roomId = roomId;
    slot->isAwaited = isAwaited;
    slot->added = Clock::now();
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_rooms.push_back(slot);
    return slot;
}

bool Timeline::SetRunning(RoomSlot& slot, bool hasOwnPace) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    slot.state = RoomSlot::State::Running;
    slot.hasOwnPace = hasOwnPace;
    slot.opened = Clock::now();
    m_roomsChanged.notify_all();
    return !m_clip || Now() <= m_clipStart;
}

void Timeline::SetDone(RoomSlot& slot) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    slot.state = RoomSlot::State::Done;
}

void Timeline::Remove(const std::shared_ptr<RoomSlot>& slot) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    slot->isStopping = true;
    TakeOut(slot);
}

void Timeline::Abort(const std::shared_ptr<RoomSlot>& slot) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    slot->isAborted = true;
    TakeOut(slot);
}

void Timeline::TakeOut(const std::shared_ptr<RoomSlot>& slot) {
    m_rooms.erase(std::remove(m_rooms.begin(), m_rooms.end(), slot), m_rooms.end());
    slot->turn.notify_all();
    m_roomsChanged.notify_all();
}

bool Timeline::MayStart(std::chrono::milliseconds readiness) const {
    const auto now = Clock::now();
    const auto isRunning = [](const auto& slot) {
        return slot->state == RoomSlot::State::Running;
    };
    const auto isAwaited = [&](const auto& slot) {
        return slot->isAwaited && slot->state == RoomSlot::State::Opening && now < slot->added + readiness;
    };
    return std::any_of(m_rooms.begin(), m_rooms.end(), isRunning) &&
           std::none_of(m_rooms.begin(), m_rooms.end(), isAwaited);
}

std::optional<Timeline::Clock::time_point>
Timeline::StartClip(std::shared_ptr<Clip> clip, std::int64_t lead, std::chrono::milliseconds readiness) {
    std::unique_lock<std::mutex> lock(m_mutex);
    // A clip that was given up must not start in rooms that have come for the next one.
    while (!m_rooms.empty() && !clip->IsAbandoned() && !MayStart(readiness))
        m_roomsChanged.wait_for(lock, kPoll);
    if (m_rooms.empty() || clip->IsAbandoned())
        return std::nullopt;
    std::int64_t start = Now();
    for (const auto& slot : m_rooms)
        if (slot->state == RoomSlot::State::Running)
            start = std::max(start, slot->next);
    m_clip = std::move(clip);
    m_clipStart = BlockAfter(start) + lead;
    const auto begin = TimeAt(m_clipStart);
    const auto listeners = m_listeners;
    lock.unlock();
    for (const auto& listener : listeners)
        listener();
    return begin;
}

std::optional<Placement> Timeline::Placed() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_clip ? std::optional(Placement{m_clip, m_clipStart, m_isFadingOut}) : std::nullopt;
}

void Timeline::OnPlaced(std::function<void()> listener) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_listeners.push_back(std::move(listener));
}

void Timeline::SetGiven(RoomSlot& slot, std::int64_t next) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    slot.hasBegun = true;
    slot.next = next;
}

Timeline::Clock::time_point Timeline::TimeAt(std::int64_t frame) const {
    return Clock::time_point(std::chrono::nanoseconds(m_base) + TimeOf(frame));
}

bool Timeline::HasEnded(const RoomSlot& slot) const {
    if (!m_clip)
        return false;
    if (slot.fadeFrom >= 0 && slot.next >= slot.fadeFrom + kFadeFrames + kTailFrames)
        return true;
    const auto total = m_clip->TotalFrames();
    return total && slot.next >= m_clipStart + *total + kTailFrames;
}

bool Timeline::FadeOut() {
    std::unique_lock<std::mutex> lock(m_mutex);
    if (!m_clip)
        return false;
    m_isFadingOut = true;
    const auto listeners = m_listeners;
    lock.unlock();
    for (const auto& listener : listeners)
        listener();
    return true;
}

Turn Timeline::NextTurn(RoomSlot& slot) {
    std::unique_lock<std::mutex> lock(m_mutex);
    Turn turn;
    const std::int64_t ahead = slot.hasOwnPace ? kOwnPaceAhead : kBlockFrames;
    while (!slot.isAborted && !slot.isStopping && slot.hasBegun && slot.next > Now() + ahead)
        slot.turn.wait_for(lock, TimeOf(slot.next - Now() - ahead));
    if (slot.isAborted) {
        turn.kind = Turn::Kind::Abort;
        return turn;
    }
    if (HasEnded(slot) || slot.hasFaded || (slot.isStopping && !slot.hasBegun)) {
        turn.kind = Turn::Kind::End;
        return turn;
    }
    Place(slot, turn);
    return turn;
}

void Timeline::Place(RoomSlot& slot, Turn& turn) const {
    // A room that is behind in silence goes on with the present; in a clip nothing may be left out.
    const bool isInClip = m_clip && slot.hasBegun && slot.next + kBlockFrames > m_clipStart;
    if (!isInClip && (!slot.hasBegun || Now() > slot.next + kMostBehind)) {
        const std::int64_t present = BlockAfter(Now());
        // One that has begun must not jump over a clip's beginning.
        slot.next =
            slot.hasBegun && m_clip ? std::min(present, m_clipStart / kBlockFrames * kBlockFrames) : present;
        turn.isGap = true;
    }
    const bool hasHeard = slot.hasBegun;
    slot.hasBegun = true;
    turn.frame = slot.next;
    slot.next += kBlockFrames;
    if (m_clip && turn.frame + kBlockFrames > m_clipStart) {
        turn.clip = m_clip;
        turn.clipPosition = turn.frame - m_clipStart;
    }
    if (m_isFadingOut)
        Fade(slot, hasHeard, turn);
    if (slot.isStopping) {
        turn.kind = Turn::Kind::LastBlock;
        slot.hasFaded = true;
    }
}

/// A room that has heard nothing yet has nothing to fade.
void Timeline::Fade(RoomSlot& slot, bool hasHeard, Turn& turn) const {
    if (slot.fadeFrom < 0)
        slot.fadeFrom = hasHeard ? turn.frame : turn.frame - kFadeFrames;
    const std::int64_t left = slot.fadeFrom + kFadeFrames - (turn.frame + kBlockFrames);
    turn.fade = left > 0 ? static_cast<float>(left) / static_cast<float>(kFadeFrames) : 0.0F;
    if (left < 0)
        turn.clip = nullptr;
}

bool Timeline::HasClip() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_clip != nullptr;
}

RoomSlot::State Timeline::StateOf(const RoomSlot& slot) const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return slot.state;
}

std::optional<bool> Timeline::WasReady(const RoomSlot& slot, std::chrono::milliseconds readiness) const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (slot.state != RoomSlot::State::Opening)
        return slot.opened < slot.added + readiness;
    return Clock::now() < slot.added + readiness ? std::nullopt : std::optional(false);
}

bool Timeline::HasPlayedClip(const RoomSlot& slot) const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto total = m_clip ? m_clip->TotalFrames() : std::nullopt;
    return total && slot.state != RoomSlot::State::Opening &&
           std::min(slot.next, Now()) >= m_clipStart + *total;
}

bool Timeline::IsStalled(const RoomSlot& slot, std::chrono::milliseconds limit) const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return slot.state == RoomSlot::State::Running && slot.hasBegun && Now() > slot.next + FramesOf(limit);
}

} // namespace controller::audio
