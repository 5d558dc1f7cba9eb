#include "controller/audio/home_assistant/HomeAssistantPlay.h"

#include "controller/audio/ISoundAddresses.h"
#include "controller/audio/SoundFormat.h"
#include "controller/audio/home_assistant/HomeAssistantDesk.h"
#include "controller/audio/home_assistant/PlayerState.h"

#include <stdexcept>
#include <utility>

namespace controller::audio {

namespace {

/// The desk holds what is under way; if that held the desk in turn, neither would ever go.
PlayerOrder WithoutDesk(PlayerOrder order) {
    order.context.houses = nullptr;
    return order;
}

} // namespace

HomeAssistantPlay::HomeAssistantPlay(PlayerOrder order, HomeAssistantRoom room, HomeAssistantDesk& desk)
    : m_order(WithoutDesk(std::move(order)))
    , m_room(std::move(room))
    , m_desk(desk)
    , m_volume(m_order.volume) {}

HttpOrder HomeAssistantPlay::OrderOf(const std::string& path, const std::string& body) const {
    return {m_room.server, path, ReadHouseToken(m_room.tokenFile), body, m_desk.Limits().answer};
}

void HomeAssistantPlay::Ask(const std::string& path, const std::string& body, HttpCall::Done done) {
    if (m_call)
        m_call->Cancel();
    try {
        HttpOrder order = OrderOf(path, body); // Before anything is given away: it may throw.
        m_call = BeginHttpCall(m_desk.Means(), std::move(order), std::move(done));
    } catch (const std::runtime_error& error) {
        done({error.what(), 0, "", ""});
    }
}

void HomeAssistantPlay::Begin(IRoomPlayer::OnEvent onEvent) {
    m_onEvent = std::move(onEvent);
    if (m_isOver) {
        m_onEvent({PlayerEvent::Kind::Gone, {}, {}});
        return;
    }
    m_desk.Enter(shared_from_this());
    m_timer.emplace(m_desk.Means().context);
    Ask("/api/states/" + m_room.player, "",
        [this, self = shared_from_this()](const HttpOutcome& outcome) { LookedAt(outcome); });
}

void HomeAssistantPlay::LookedAt(const HttpOutcome& outcome) {
    std::string reason = WhyNot(outcome);
    if (reason.empty())
        reason = WhyUnusable(m_room, outcome.body);
    if (!reason.empty())
        Fail(reason);
    else
        Opened(outcome.ourAddress);
}

void HomeAssistantPlay::Opened(const std::string& ourAddress) {
    m_ourAddress = ourAddress;
    m_isOpen = true;
    m_order.timeline->OnPlaced([weak = weak_from_this()] {
        if (const auto self = weak.lock())
            self->m_desk.Post([self] { self->ClipChanged(); });
    });
    // However late it comes, its player begins at the clip's beginning.
    (void)m_order.timeline->SetRunning(*m_order.slot, true);
    ClipChanged();
}

/// There is a clip, or it is to end.
void HomeAssistantPlay::ClipChanged() {
    const auto clip = m_order.timeline->Placed();
    if (!m_isOpen || !clip)
        return;
    if (clip->isFadingOut) {
        StopPlayer([this, self = shared_from_this()](const std::string& error) {
            if (!m_isOpen)
                Leave(); // The stream is over, too.
            else if (error.empty())
                End();
            else
                Fail(error);
        });
        return;
    }
    if (!std::exchange(m_clip, clip))
        After(m_order.timeline->TimeAt(clip->start), &HomeAssistantPlay::OrderWhenItBegins);
}

void HomeAssistantPlay::End() {
    if (!std::exchange(m_isOpen, false))
        return;
    if (m_clip)
        m_order.timeline->SetGiven(*m_order.slot,
                                   m_clip->start + m_clip->clip->TotalFrames().value_or(0) + kTailFrames);
    m_order.timeline->SetDone(*m_order.slot);
    m_onEvent({PlayerEvent::Kind::Ended, {}, {}});
}

void HomeAssistantPlay::Fail(const std::string& reason) {
    if (m_isOver)
        return;
    const bool wasOpen = std::exchange(m_isOpen, false);
    m_onEvent({PlayerEvent::Kind::Failed, wasOpen ? RoomTrouble::Kind::Failed : RoomTrouble::Kind::Refused,
               reason});
    Leave();
}

void HomeAssistantPlay::Stop() {
    if (m_isOver)
        return;
    const bool wasOpen = std::exchange(m_isOpen, false);
    if (m_isStopping)
        return; // Its player is being told; who waits for that leaves.
    if (!wasOpen) {
        Leave();
        return;
    }
    StopPlayer([this, self = shared_from_this()](const std::string& /*error*/) {
        Leave(); // Nobody waits for this room any more.
    });
}

void HomeAssistantPlay::Abort() {
    m_isOpen = false;
    Leave();
}

void HomeAssistantPlay::Leave() {
    if (std::exchange(m_isOver, true))
        return;
    m_order.timeline->Abort(m_order.slot); // A clip waits for this room no longer.
    m_timer.reset();
    for (auto* call : {&m_call, &m_playing})
        if (const auto one = std::exchange(*call, nullptr))
            one->Cancel();
    if (!m_path.empty())
        m_order.context.addresses->Withdraw(m_path);
    if (m_onEvent)
        m_onEvent({PlayerEvent::Kind::Gone, {}, {}});
}

void HomeAssistantPlay::After(Clock::time_point moment, void (HomeAssistantPlay::*next)()) {
    m_timer->expires_at(moment);
    m_timer->async_wait([self = shared_from_this(), next, turn = ++m_turn](const auto& /*error*/) {
        if (turn == self->m_turn && self->m_isOpen)
            (*self.*next)();
    });
}

std::string HomeAssistantPlay::WhyNot(const HttpOutcome& outcome) const {
    const std::string server = m_room.server.Name();
    if (outcome.status == 0)
        return server + " " + outcome.error;
    if (outcome.status == 401)
        return server + " does not take the token in " + m_room.tokenFile;
    if (outcome.status == 404)
        return server + " knows no " + m_room.player;
    if (outcome.status != 200)
        return server + " answers " + std::to_string(outcome.status) + " to " + m_room.player;
    return {};
}

} // namespace controller::audio
