#include "controller/announcements/PlayProgress.h"

#include <algorithm>

namespace controller {

namespace {

using std::chrono::milliseconds;

/// What the agent goes by when the announcement says nothing, and what it leaves the rooms behind a sound.
constexpr milliseconds kAudioDelay{1000};
constexpr milliseconds kTimeout{30000};
constexpr milliseconds kSettling{2000};
/// The agent looks so often whether it is over.
constexpr milliseconds kPoll{1000};

milliseconds OrElse(std::uint32_t given, milliseconds otherwise) {
    return given != 0 ? milliseconds(given) : otherwise;
}

} // namespace

PlayProgress::PlayProgress(const Announcements& announcements, EventFeed& feed)
    : m_announcements(announcements)
    , m_feed(feed)
    , m_subscription(feed.Subscribe([this](const Event& event) { Take(event); })) {}

void PlayProgress::SoundMeasured(std::chrono::system_clock::time_point since, milliseconds length) {
    m_driverOnly.Assert();
    if (!m_now || m_now->since != since)
        return;
    m_length = length;
    if (m_now->sound)
        m_now->sound->lengthMs = length.count();
    Tell();
}

void PlayProgress::Take(const Event& event) {
    m_driverOnly.Assert();
    const auto* const started = std::get_if<events::AnnouncementStarted>(&event.data);
    if (started == nullptr && !m_now)
        return;
    if (started != nullptr) {
        Started(event, started->announcement);
    } else if (std::holds_alternative<events::AnnouncementEnded>(event.data)) {
        m_now.reset();
        m_feed.Publish(events::PlayingChanged{});
        return;
    } else if (std::holds_alternative<events::AnnouncementStopped>(event.data)) {
        m_now->isStopped = true;
        m_popupsEnd = std::min(m_popupsEnd, event.time);
        m_length = milliseconds(0);
    } else if (!TakeSound(event) && !TakePopup(event)) {
        return;
    }
    Tell();
}

void PlayProgress::Started(const Event& event, std::uint32_t announcement) {
    m_now = PlayingNow{};
    m_now->announcement = announcement;
    m_now->name = m_announcements.NameOf(announcement);
    m_now->since = event.time;
    m_popups = 0;
    m_length = milliseconds(0);
    m_soundDue = m_popupsEnd = event.time;
    const AnnouncementPointer record = m_announcements.Find(announcement);
    if (!record)
        return;
    if (!record->audio.file.empty() && !record->rooms.empty())
        m_soundDue += OrElse(record->audio.delayMs, kAudioDelay);
    const auto& video = record->video;
    const bool hasPopup = !video.text.empty() || !video.image.empty() || video.variable;
    if (hasPopup && !record->navigators.empty())
        m_popupsEnd += milliseconds(video.delayMs) + OrElse(video.timeoutMs, kTimeout);
}

bool PlayProgress::TakeSound(const Event& event) {
    if (const auto* sound = std::get_if<events::SoundStarted>(&event.data)) {
        m_soundDue = event.time;
        m_now->sound = PlayingSound{sound->file, event.time, m_length.count()};
        return true;
    }
    if (!std::holds_alternative<events::SoundEnded>(event.data))
        return false;
    m_now->sound.reset();
    m_soundDue = event.time;
    m_length = milliseconds(0);
    return true;
}

/// A popup of another one that stands still is none that can be dismissed. Of a thousand screens only what
/// changes what is known is worth a word.
bool PlayProgress::TakePopup(const Event& event) {
    const bool couldBeDismissed = m_now->canBeDismissed;
    const auto formerEnd = m_popupsEnd;
    if (std::holds_alternative<events::PopupShown>(event.data))
        ++m_popups;
    else if (const auto* hidden = std::get_if<events::PopupHidden>(&event.data); hidden && m_popups != 0) {
        --m_popups;
        if (hidden->why == events::PopupEnd::Dismissed)
            m_popupsEnd = std::min(m_popupsEnd, event.time);
    } else
        return false;
    m_now->canBeDismissed = m_popups != 0;
    return couldBeDismissed != m_now->canBeDismissed || formerEnd != m_popupsEnd;
}

void PlayProgress::Expect() {
    const auto since = m_now->since;
    const bool hasSound = m_soundDue != since;
    const auto ends = std::max(hasSound ? m_soundDue + m_length + kSettling : since, m_popupsEnd);
    const auto polls = std::chrono::ceil<std::chrono::seconds>(ends - since);
    m_now->ends = since + std::max<std::chrono::system_clock::duration>(polls, kPoll);
}

void PlayProgress::Tell() {
    Expect();
    m_feed.Publish(events::PlayingChanged{m_now});
}

} // namespace controller
