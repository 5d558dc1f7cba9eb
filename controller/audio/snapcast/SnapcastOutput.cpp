#include "controller/audio/IRoomPlayer.h"
#include "controller/audio/Output.h"
#include "controller/audio/snapcast/SnapcastDesk.h"
#include "controller/audio/snapcast/SnapcastLaw.h"
#include "controller/audio/snapcast/SnapcastPlace.h"

#include <memory>
#include <utility>

namespace controller::audio {

namespace {

/// A room that is a client of a Snapcast server. What it does happens on the driver thread, but for the feed.
class SnapcastPlayer final : public IRoomPlayer, public std::enable_shared_from_this<SnapcastPlayer> {
public:
    SnapcastPlayer(PlayerOrder order, SnapcastPlace place)
        : m_desk(order.context.snapcast)
        , m_timeline(std::move(order.timeline))
        , m_slot(std::move(order.slot))
        , m_volume(order.volume)
        , m_place(std::move(place)) {}

    void Start(OnEvent onEvent) override;
    void SetVolume(unsigned volume) override;
    void Stop() override;
    void Abort() override { Stop(); }

private:
    void Post(void (SnapcastPlayer::*what)());
    void Open();
    void OnReady(const SnapcastState& state);
    void OnEnded(bool isCut);
    void Fail(RoomTrouble::Kind kind, const std::string& reason);
    void Leave();
    void LetGo(bool isCut);
    [[nodiscard]] SnapcastFeed::Listener ListenToFeed();

    const std::shared_ptr<SnapcastDesk> m_desk;
    const std::shared_ptr<Timeline> m_timeline;
    const std::shared_ptr<RoomSlot> m_slot;
    unsigned m_volume;
    const SnapcastPlace m_place;
    OnEvent m_onEvent;
    SnapcastLoans* m_loans = nullptr; ///< null: nothing is held
    unsigned m_hold = 0;
    std::shared_ptr<SnapcastFeed> m_feed;
    bool m_isGone = false;
};

void SnapcastPlayer::Start(OnEvent onEvent) {
    m_onEvent = std::move(onEvent);
    m_desk->StartThread();
    Post(&SnapcastPlayer::Open);
}

void SnapcastPlayer::Stop() {
    Post(&SnapcastPlayer::Leave);
}

void SnapcastPlayer::Post(void (SnapcastPlayer::*what)()) {
    m_desk->Post([self = shared_from_this(), what] { (self.get()->*what)(); });
}

void SnapcastPlayer::SetVolume(unsigned volume) {
    m_desk->Post([self = shared_from_this(), volume] {
        self->m_volume = volume;
        if (self->m_loans != nullptr)
            self->m_loans->SetVolume(self->m_hold, SnapcastPercent(volume));
    });
}

void SnapcastPlayer::Open() {
    if (m_isGone)
        return;
    m_loans = m_desk->LoansOf({m_place.host, m_place.port}, m_place.Server());
    if (m_loans == nullptr) {
        Fail(RoomTrouble::Kind::Refused, "nothing of other programs may be changed");
        return;
    }
    const auto self = weak_from_this();
    m_hold = m_loans->Hold({m_place.client, m_place.stream, SnapcastPercent(m_volume)},
                           {[self](const SnapcastState& state) {
                                if (const auto player = self.lock())
                                    player->OnReady(state);
                            },
                            [self](RoomTrouble::Kind kind, const std::string& reason) {
                                if (const auto player = self.lock())
                                    player->Fail(kind, reason);
                            }});
}

void SnapcastPlayer::OnReady(const SnapcastState& state) {
    m_feed = m_desk->FeedOf(m_timeline, m_place, state);
    m_desk->Do(m_feed,
               [slot = m_slot, listener = ListenToFeed()](SnapcastFeed& feed) { feed.Add(slot, listener); });
}

SnapcastFeed::Listener SnapcastPlayer::ListenToFeed() {
    const auto tell = [desk = m_desk, weak = weak_from_this()](auto what) {
        desk->Post([weak, what] {
            if (const auto player = weak.lock(); player && !player->m_isGone)
                what(*player);
        });
    };
    return {[tell] {
                tell([](SnapcastPlayer& player) { player.m_onEvent({PlayerEvent::Kind::Late, {}, {}}); });
            },
            [tell](bool isCut) { tell([isCut](SnapcastPlayer& player) { player.OnEnded(isCut); }); },
            [tell](const std::string& reason) {
                tell([reason](SnapcastPlayer& player) { player.Fail(RoomTrouble::Kind::Failed, reason); });
            }};
}

void SnapcastPlayer::OnEnded(bool isCut) {
    LetGo(isCut);
    m_onEvent({PlayerEvent::Kind::Ended, {}, {}});
}

void SnapcastPlayer::Fail(RoomTrouble::Kind kind, const std::string& reason) {
    if (m_isGone)
        return;
    m_timeline->Abort(m_slot); // Other rooms shall not wait for it.
    m_onEvent({PlayerEvent::Kind::Failed, kind, reason});
    Leave();
}

void SnapcastPlayer::Leave() {
    if (std::exchange(m_isGone, true))
        return;
    LetGo(true);
    m_onEvent({PlayerEvent::Kind::Gone, {}, {}});
}

void SnapcastPlayer::LetGo(bool isCut) {
    if (const auto feed = std::exchange(m_feed, nullptr))
        m_desk->Do(feed, [slot = m_slot](SnapcastFeed& open) { open.Remove(slot); });
    if (SnapcastLoans* const loans = std::exchange(m_loans, nullptr))
        loans->Release(m_hold, isCut);
}

} // namespace

Output CreateSnapcastOutput(const std::string& text) {
    PlayerOutput output;
    output.make = [place = ReadSnapcastPlace(text)](PlayerOrder order) {
        return std::make_shared<SnapcastPlayer>(std::move(order), place);
    };
    return output;
}

} // namespace controller::audio
