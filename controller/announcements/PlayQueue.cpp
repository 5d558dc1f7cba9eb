#include "controller/announcements/PlayQueue.h"

#include <algorithm>
#include <utility>

namespace controller {

namespace {

std::int64_t Milliseconds(PlayQueue::Time time) {
    return std::chrono::duration_cast<std::chrono::milliseconds>(time.time_since_epoch()).count();
}

QueuedRows RowsOf(const std::deque<Queued>& waiting) {
    QueuedRows rows;
    for (const Queued& one : waiting)
        rows.push_back({one.entry, one.announcement, one.name, Milliseconds(one.askedAt)});
    return rows;
}

} // namespace

PlayQueue::PlayQueue(Parts parts)
    : m_parts(std::move(parts))
    , m_next(m_parts.scheduler, "the next announcement")
    , m_subscription(m_parts.feed.Subscribe([this](const Event& event) { Take(event); })) {}

bool PlayQueue::IsInTime(const QueuedRow& row, Time now) {
    return Milliseconds(now) - row.askedAtMs <= std::chrono::milliseconds(kLongestWait).count();
}

QueuedRows PlayQueue::Begin(const QueuedRows& rows, Time now) {
    m_driverOnly.Assert();
    QueuedRows dropped;
    for (const QueuedRow& row : rows) {
        m_lastEntry = std::max(m_lastEntry, row.entry);
        if (!IsInTime(row, now) || !m_parts.announcements.Find(row.announcement)) {
            dropped.push_back(row);
            continue;
        }
        const Time askedAt{std::chrono::milliseconds(row.askedAtMs)};
        m_waiting.push_back({row.entry, row.announcement, row.name, askedAt});
    }
    m_kept = m_lastEntry;
    if (!dropped.empty())
        m_parts.store.WriteQueue(RowsOf(m_waiting), Nobody);
    HandOverSoon();
    return dropped;
}

void PlayQueue::Ask(std::uint32_t announcement, const Done& done) {
    m_driverOnly.Assert();
    const AnnouncementPointer meant = m_parts.announcements.Find(announcement);
    if (!meant) {
        m_parts.announcements.PlayQueued(announcement,
                                         [&](const Announcements::Outcome& unknown) { done({unknown}); });
        return;
    }
    const Announcements::Outcome accepted{{}, meant, ""};
    const auto present = EntryOf(announcement);
    if (present) {
        m_parts.feed.Publish(events::PlayAsked{announcement, *present});
        done({accepted, *present});
    } else if (m_waiting.size() >= kMost) {
        done({accepted, 0, true});
    } else {
        Add(accepted, done);
    }
}

/// 0 for what plays.
std::optional<std::uint64_t> PlayQueue::EntryOf(std::uint32_t announcement) const {
    const auto& current = m_parts.playing.Current();
    if (current && current->id == announcement)
        return 0;
    for (const Queued& one : m_waiting)
        if (one.announcement == announcement)
            return one.entry;
    return std::nullopt;
}

void PlayQueue::Add(const Announcements::Outcome& accepted, const Done& done) {
    const std::uint64_t entry = ++m_lastEntry;
    const Announcement& announcement = *accepted.announcement;
    m_waiting.push_back({entry, announcement.id, announcement.name, std::chrono::system_clock::now()});
    m_parts.feed.Publish(events::PlayAsked{announcement.id, entry});
    HandOver(done);
    if (Find(entry) == m_waiting.end())
        return;
    m_kept = entry;
    Changed([done, accepted, entry](const std::string& error) {
        done({{accepted.answer, accepted.announcement, error}, entry});
    });
}

/// Not from inside the agent's own work, which is not over when it tells of an end.
void PlayQueue::HandOverSoon() {
    m_next.Start({}, [this] {
        for (const std::uint32_t announcement : std::exchange(m_over, {}))
            Forget(announcement);
        HandOver();
    });
}

/// `done` is told of the agent's answer, if the newest entry is handed over.
void PlayQueue::HandOver(const Done& done) {
    while (!m_isClosed && !m_waiting.empty() && !m_parts.playing.Current()) {
        const Queued next = m_waiting.front();
        if (!IsReady(next))
            return;
        m_waiting.pop_front();
        // It is told that it begins before it is told that it waits no more: it was not taken back.
        m_parts.announcements.PlayQueued(next.announcement, [&](const Announcements::Outcome& outcome) {
            if (done && next.entry == m_lastEntry)
                done({outcome, next.entry});
        });
        if (next.entry <= m_kept)
            Changed(Nobody);
    }
}

/// What is not is made so.
bool PlayQueue::IsReady(const Queued& next) {
    const AnnouncementPointer announcement = m_parts.announcements.Find(next.announcement);
    if (announcement && m_ready != next.entry && m_preparing != next.entry) {
        m_preparing = next.entry;
        m_parts.prepare(*announcement, [this, entry = next.entry] { Ready(entry); });
    }
    return !announcement || m_ready == next.entry;
}

void PlayQueue::Ready(std::uint64_t entry) {
    m_driverOnly.Assert();
    if (m_preparing != entry)
        return; // another one has come before it, or it was taken back
    m_preparing = 0;
    m_ready = entry;
    HandOverSoon();
}

std::vector<Queued> PlayQueue::Waiting() const {
    m_driverOnly.Assert();
    return {m_waiting.begin(), m_waiting.end()};
}

PlayQueue::Place PlayQueue::Find(std::uint64_t entry) {
    return std::find_if(m_waiting.begin(), m_waiting.end(),
                        [entry](const Queued& one) { return one.entry == entry; });
}

bool PlayQueue::Remove(std::uint64_t entry, WriteDone done) {
    m_driverOnly.Assert();
    const Place place = Find(entry);
    if (place == m_waiting.end())
        return false;
    const std::uint32_t announcement = place->announcement;
    m_waiting.erase(place);
    Forget(announcement);
    Changed(std::move(done));
    HandOverSoon();
    return true;
}

bool PlayQueue::Move(std::uint64_t entry, std::uint64_t before, WriteDone done) {
    m_driverOnly.Assert();
    const Place place = Find(entry);
    if (place == m_waiting.end() || (before != 0 && Find(before) == m_waiting.end()))
        return false;
    if (entry != before) {
        const Queued moved = *place;
        m_waiting.erase(place);
        m_waiting.insert(before != 0 ? Find(before) : m_waiting.end(), moved);
    }
    Changed(std::move(done));
    HandOverSoon();
    return true;
}

bool PlayQueue::StopPreparing() {
    m_driverOnly.Assert();
    return m_preparing != 0 && !m_parts.playing.Current() && Remove(m_preparing, Nobody);
}

void PlayQueue::Close() {
    m_driverOnly.Assert();
    m_isClosed = true;
    m_next.Stop();
}

void PlayQueue::Changed(WriteDone done) {
    m_parts.store.WriteQueue(RowsOf(m_waiting), std::move(done));
    m_parts.feed.Publish(events::QueueChanged{Waiting()});
}

/// What was there for one play, if it was.
void PlayQueue::Forget(std::uint32_t announcement) {
    const AnnouncementPointer meant = m_parts.announcements.Find(announcement);
    if (meant && meant->house.isPassing)
        m_parts.announcements.Remove(announcement, [](const Announcements::Outcome& /*outcome*/) {
            // Left over, it is gone at the next start.
        });
}

void PlayQueue::Take(const Event& event) {
    if (m_isClosed)
        return;
    if (const auto* removed = std::get_if<events::AnnouncementRemoved>(&event.data))
        Removed(removed->announcement);
    const auto* const ended = std::get_if<events::AnnouncementEnded>(&event.data);
    if (ended == nullptr)
        return;
    m_over.push_back(ended->announcement);
    HandOverSoon();
}

void PlayQueue::Removed(std::uint32_t announcement) {
    const auto isIt = [announcement](const Queued& one) {
        return one.announcement == announcement;
    };
    const auto place = std::find_if(m_waiting.begin(), m_waiting.end(), isIt);
    if (place == m_waiting.end())
        return;
    m_waiting.erase(place);
    Changed(Nobody);
    HandOverSoon();
}

} // namespace controller
