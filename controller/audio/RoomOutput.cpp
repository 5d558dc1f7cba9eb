#include "controller/audio/RoomOutput.h"

#include "controller/audio/Held.h"
#include "controller/audio/RoomPipeline.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace controller::audio {

namespace {

const char* WordFor(RoomTrouble::Kind kind) {
    switch (kind) {
    case RoomTrouble::Kind::Refused:
        return "cannot be opened";
    case RoomTrouble::Kind::Failed:
        return "failed";
    case RoomTrouble::Kind::Hanging:
        return "hangs";
    case RoomTrouble::Kind::Silent:
        return "is silent";
    case RoomTrouble::Kind::Late:
        return "opened late";
    }
    return "failed";
}

bool IsOf(const std::weak_ptr<IRoomPlayer>& sender, const std::shared_ptr<IRoomPlayer>& player) {
    return !sender.owner_before(player) && !player.owner_before(sender);
}

std::string Milliseconds(std::chrono::milliseconds time) {
    return std::to_string(time.count()) + " ms";
}

} // namespace

RoomOutput::RoomOutput(RoomConfig config,
                       std::shared_ptr<EngineContext> context,
                       std::function<void()> onChange)
    : m_config(std::move(config))
    , m_output(CreateOutput(m_config.output))
    , m_context(std::move(context))
    , m_onChange(std::move(onChange)) {}

void RoomOutput::Join(std::shared_ptr<Timeline> timeline, unsigned take, bool isUrgent) {
    Leave();
    m_timeline = std::move(timeline);
    m_take = take;
    m_isUrgent = isUrgent;
    m_slot = m_timeline->AddRoom(m_config.id, m_isReadyInTime);
    m_lastTrouble.clear();
    m_isSilent = false;
    if (!m_closing)
        Open();
}

void RoomOutput::Open() {
    if (m_hanging >= m_context->limits.hangingPerRoom) {
        m_timeline->Abort(m_slot);
        m_timeline = nullptr;
        Report(RoomTrouble::Kind::Refused,
               "its output still hangs in " + std::to_string(m_hanging) + " earlier announcements");
        return;
    }
    m_current = MakePlayer();
    const auto tell = [this, mailbox = m_context->mailbox,
                       sender = Sender(m_current)](const PlayerEvent& event) {
        mailbox->Post([this, sender, event] { OnEvent(sender, event); });
    };
    try {
        m_current->Start(tell);
    } catch (const std::system_error& error) {
        m_timeline->Abort(m_slot);
        m_timeline = nullptr;
        m_current = nullptr;
        Report(RoomTrouble::Kind::Refused, std::string("no thread for its output: ") + error.what());
    }
}

std::shared_ptr<IRoomPlayer> RoomOutput::MakePlayer() {
    const auto silent = [this, mailbox = m_context->mailbox, sender = m_slot](const std::string& reason) {
        mailbox->Post([this, sender, reason] { OnSilent(sender, reason); });
    };
    PlayerOrder order{m_timeline, m_slot, m_config.volume, LeadSilence(), Context(silent), m_isUrgent};
    if (const auto* own = std::get_if<PlayerOutput>(&m_output))
        return own->make(std::move(order));
    return std::make_shared<RoomPipeline>(std::move(order), std::get<ElementOutput>(m_output),
                                          m_context->workers);
}

OutputContext RoomOutput::Context(std::function<void(const std::string&)> silent) const {
    return {m_config.id,
            m_take,
            std::move(silent),
            m_context->devices,
            m_context->packets,
            m_context->pulse,
            m_context->snapcast,
            std::make_shared<Held>(),
            m_context->services.addresses,
            m_context->pages,
            m_context->houses};
}

RoomOutput::Preparation RoomOutput::GetPreparation() {
    const auto* own = std::get_if<PlayerOutput>(&m_output);
    if (own == nullptr || !own->prepare)
        return nullptr;
    return [prepare = own->prepare,
            context = Context([](const std::string& /*reason*/) {})](const WholeSound::File& file) {
        prepare(context, file);
    };
}

std::chrono::milliseconds RoomOutput::LeadSilence() const {
    const auto* own = std::get_if<PlayerOutput>(&m_output);
    return own != nullptr ? std::max(own->leadSilence, m_config.leadSilence) : m_config.leadSilence;
}

bool RoomOutput::NeedsWholeSound() const {
    const auto* own = std::get_if<PlayerOutput>(&m_output);
    return own != nullptr && own->needsWholeSound;
}

void RoomOutput::Leave() {
    if (!m_timeline)
        return;
    m_timeline->Remove(m_slot);
    LeaveTimeline();
    if (!m_current)
        return;
    m_current->Stop();
    MoveToClosing();
}

void RoomOutput::LeaveTimeline() {
    m_isReadyInTime = m_timeline->WasReady(*m_slot, m_context->limits.readiness).value_or(m_isReadyInTime);
    m_timeline = nullptr;
}

void RoomOutput::MoveToClosing() {
    m_closing = std::exchange(m_current, nullptr);
    m_closingSince = Clock::now();
}

void RoomOutput::SetVolume(unsigned volume) {
    m_config.volume = std::min(volume, 100U);
    if (m_current)
        m_current->SetVolume(m_config.volume);
}

RoomOutput::State RoomOutput::GetState() const {
    if (!m_timeline)
        return State::Out;
    switch (m_timeline->StateOf(*m_slot)) {
    case RoomSlot::State::Opening:
        return State::Opening;
    case RoomSlot::State::Running:
        return State::Playing;
    case RoomSlot::State::Done:
        return State::Ended;
    }
    return State::Out;
}

bool RoomOutput::HasHeardClip() const {
    return m_timeline && !m_isSilent && (GetState() == State::Ended || m_timeline->HasPlayedClip(*m_slot));
}

void RoomOutput::CheckTime() {
    const EngineLimits& limits = m_context->limits;
    if (m_closing && Clock::now() > m_closingSince + limits.closing)
        GiveUp(m_closing, "did not close within " + Milliseconds(limits.closing));
    if (!m_current)
        return;
    if (GetState() == State::Opening && Clock::now() > m_slot->added + limits.opening)
        GiveUp(m_current, "did not open within " + Milliseconds(limits.opening));
    else if (m_timeline->IsStalled(*m_slot, limits.stall))
        GiveUp(m_current, "took no sound for " + Milliseconds(limits.stall));
}

void RoomOutput::GiveUp(std::shared_ptr<IRoomPlayer>& player, const std::string& reason) {
    const bool isCurrent = player == m_current;
    player->Abort();
    player = nullptr;
    ++m_hanging;
    if (isCurrent)
        LeaveTimeline();
    Report(RoomTrouble::Kind::Hanging, reason);
    if (!isCurrent && m_timeline && !m_current)
        Open();
    m_onChange();
}

void RoomOutput::OnEvent(const Sender& sender, const PlayerEvent& event) {
    switch (event.kind) {
    case PlayerEvent::Kind::Late:
        if (IsOf(sender, m_current))
            Report(RoomTrouble::Kind::Late, "the beginning of the announcement is missing");
        break;
    case PlayerEvent::Kind::Ended:
        break; // The slot says so.
    case PlayerEvent::Kind::Failed:
        OnFailed(sender, event);
        break;
    case PlayerEvent::Kind::Gone:
        OnGone(sender);
        break;
    }
    m_onChange();
}

void RoomOutput::OnFailed(const Sender& sender, const PlayerEvent& event) {
    if (!IsOf(sender, m_current) && !IsOf(sender, m_closing))
        return; // It was given up before, and that was reported.
    // What fails after its last sample has done its duty in this stream.
    if (IsOf(sender, m_current) && GetState() != State::Ended) {
        LeaveTimeline();
        MoveToClosing();
    }
    Report(event.trouble, event.reason);
}

void RoomOutput::OnSilent(const std::shared_ptr<RoomSlot>& sender, const std::string& reason) {
    if (!m_timeline || sender != m_slot)
        return;
    m_isSilent = true;
    Report(RoomTrouble::Kind::Silent, reason);
}

void RoomOutput::OnGone(const Sender& sender) {
    if (IsOf(sender, m_current)) {
        m_current = nullptr;
        return;
    }
    if (!IsOf(sender, m_closing)) {
        --m_hanging;
        return;
    }
    m_closing = nullptr;
    if (m_timeline && !m_current)
        Open();
}

void RoomOutput::Report(RoomTrouble::Kind kind, const std::string& reason) {
    m_lastTrouble = reason;
    const bool isHarmless = kind == RoomTrouble::Kind::Late || kind == RoomTrouble::Kind::Silent;
    m_context->services.log.Write(isHarmless ? Severity::Warning : Severity::Error,
                                  "room " + std::to_string(m_config.id) + " (" + m_config.name +
                                      "): its output " + WordFor(kind) + ": " + reason);
    if (m_context->services.roomTrouble)
        m_context->mailbox->Post(
            [context = m_context.get(), trouble = RoomTrouble{m_config.id, kind, reason}] {
                context->services.roomTrouble(trouble);
            });
}

} // namespace controller::audio
