#include "controller/audio/page/PagePlayer.h"

#include "controller/audio/SoundFormat.h"
#include "controller/audio/VolumeLaw.h"

#include <algorithm>
#include <utility>

namespace controller::audio {

namespace {

/// A page's word that its sound is over may come a little before that is so by the clock here.
constexpr std::chrono::milliseconds kEndsEarly{500};

std::chrono::milliseconds Until(Timeline::Clock::time_point time) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(time - Timeline::Clock::now());
    return std::max(left, std::chrono::milliseconds(0));
}

} // namespace

PagePlayer::PagePlayer(PlayerOrder order, std::uint32_t navigator)
    : m_order(std::move(order))
    , m_navigator(navigator)
    , m_volume(m_order.volume) {}

IPageSpeakers* PagePlayer::Speakers() const {
    return m_order.context.pages ? m_order.context.pages->Speakers() : nullptr;
}

std::string PagePlayer::Page(const char* rest) const {
    return "the page of screen " + std::to_string(m_navigator) + " " + rest;
}

void PagePlayer::Start(OnEvent onEvent) {
    m_onEvent = std::move(onEvent);
    if (Speakers() == nullptr) {
        Fail(RoomTrouble::Kind::Refused, "there is no way to the pages of screens");
        return;
    }
    const std::string reason = Speakers()->WhyNot(m_navigator);
    if (!reason.empty()) {
        Fail(RoomTrouble::Kind::Refused, reason);
        return;
    }
    m_latest.emplace(m_order.context.pages->Driver(), "a page that is to play");
    m_end.emplace(m_order.context.pages->Driver(), "the end of a page's sound");
    m_order.timeline->OnPlaced([desk = m_order.context.pages, self = weak_from_this()] {
        desk->Post([self] {
            if (const auto player = self.lock())
                player->Look();
        });
    });
    // What it has missed it says itself.
    (void)m_order.timeline->SetRunning(*m_order.slot, true);
    Look();
}

void PagePlayer::Look() {
    const auto placed = m_order.timeline->Placed();
    if (!m_onEvent || !placed)
        return;
    if (placed->isFadingOut) {
        FadeOut();
        return;
    }
    if (std::exchange(m_isAsked, true))
        return;
    const auto& whole = placed->clip->Whole();
    if (!whole) {
        Fail(RoomTrouble::Kind::Failed, "no file was made of the sound");
        return;
    }
    whole->WhenMade([desk = m_order.context.pages, self = weak_from_this(),
                     placed = *placed](const WholeSound::File& file) {
        desk->Post([self, placed, file] {
            if (const auto player = self.lock())
                player->Play(placed, file);
        });
    });
}

void PagePlayer::Play(const Placement& placed, const WholeSound::File& file) {
    if (!m_onEvent)
        return;
    const auto frames = placed.clip->TotalFrames();
    const auto sound = Speakers() != nullptr ? m_order.context.pages->Offer(file) : std::nullopt;
    if (!sound || !frames)
        Fail(RoomTrouble::Kind::Failed,
             file ? "the sound cannot be offered to pages"
                  : "the sound is too long for a page, or cannot be read to its end");
    else
        Begin(*sound, placed, *frames);
}

void PagePlayer::Begin(const PageSound& sound, const Placement& placed, std::int64_t frames) {
    const Timeline& timeline = *m_order.timeline;
    const auto begin = timeline.TimeAt(placed.start);
    m_clipEnd = timeline.TimeAt(placed.start + frames);
    m_play =
        Speakers()->Begin(m_navigator, sound, begin, Gain(m_volume), [this](PageNews news) { Hear(news); });
    if (m_play == 0) {
        Fail(RoomTrouble::Kind::Refused, Speakers()->WhyNot(m_navigator));
        return;
    }
    const std::int64_t next = placed.start + frames + kTailFrames;
    m_order.timeline->SetGiven(*m_order.slot, next);
    m_latest->Start(Until(begin + kLatest),
                    [this] { Fail(RoomTrouble::Kind::Failed, Page("did not begin to play in time")); });
    m_end->Start(Until(timeline.TimeAt(next)), [this] { End(); });
}

void PagePlayer::Hear(PageNews news) {
    switch (news) {
    case PageNews::Late:
    case PageNews::Started:
        // A page may say so again and again.
        if (!std::exchange(m_hasStarted, true) && news == PageNews::Late)
            m_onEvent({PlayerEvent::Kind::Late, {}, {}});
        m_latest->Stop();
        break;
    case PageNews::Ended:
        if (Clock::now() + kEndsEarly < m_clipEnd)
            Fail(RoomTrouble::Kind::Failed, Page("stopped before the end"));
        break;
    case PageNews::Failed:
        Fail(RoomTrouble::Kind::Failed, Page("cannot play the sound"));
        break;
    case PageNews::Silenced:
        Fail(RoomTrouble::Kind::Failed, Page("was silenced while it played"));
        break;
    case PageNews::Gone:
        Fail(RoomTrouble::Kind::Failed, Page("went away while it played"));
        break;
    }
}

void PagePlayer::SetVolume(unsigned volume) {
    m_volume = volume;
    if (m_play != 0 && Speakers() != nullptr)
        Speakers()->SetGain(m_play, Gain(volume));
}

/// The stream is stopped: nobody asks any more whether the page has begun.
void PagePlayer::FadeOut() {
    m_isAsked = true;
    m_hasStarted = true;
    m_latest->Stop();
    EndPlay();
    m_end->Start(std::chrono::ceil<std::chrono::milliseconds>(TimeOf(kFadeFrames + kTailFrames)),
                 [this] { End(); });
}

void PagePlayer::End() {
    if (!m_hasStarted) {
        Fail(RoomTrouble::Kind::Failed, Page("did not begin to play in time"));
        return;
    }
    m_order.timeline->SetDone(*m_order.slot);
    m_onEvent({PlayerEvent::Kind::Ended, {}, {}});
    Close();
}

void PagePlayer::Fail(RoomTrouble::Kind kind, const std::string& reason) {
    m_order.timeline->Abort(m_order.slot); // A clip waits for this room no longer.
    m_onEvent({PlayerEvent::Kind::Failed, kind, reason});
    Close();
}

void PagePlayer::EndPlay() {
    if (m_play != 0 && Speakers() != nullptr)
        Speakers()->End(m_play);
    m_play = 0;
}

void PagePlayer::Close() {
    if (!m_onEvent)
        return;
    m_latest.reset();
    m_end.reset();
    EndPlay();
    std::exchange(m_onEvent, nullptr)({PlayerEvent::Kind::Gone, {}, {}});
}

} // namespace controller::audio
