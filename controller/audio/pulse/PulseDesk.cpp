#include "controller/audio/pulse/PulseDesk.h"

#include "controller/audio/pulse/MediaPlayers.h"

#include <future>
#include <optional>
#include <stdexcept>
#include <tuple>
#include <utility>

namespace controller::audio {

namespace {

std::string ReasonIn(const PulseState& state, const std::string& sink) {
    if (!state.isThere)
        return state.reason;
    const std::string wanted = sink == "default" ? state.defaultSink : sink;
    if (sink == "default" && (wanted.empty() || wanted == PulseDesk::kDummy))
        return PulseDesk::kNoDevice;
    if (state.sinks.count(wanted) != 0)
        return "";
    std::string known;
    for (const auto& [name, index] : state.sinks)
        known += (known.empty() ? "; it has " : ", ") + name;
    return "the sound server has no sink \"" + wanted + "\"" + known;
}

} // namespace

PulseServer& PulseDesk::Server() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_server)
        m_server = std::make_unique<PulseServer>([this, mailbox = m_mailbox](const PulseState& state) {
            mailbox->Post([this, state] { OnState(state); });
        });
    return *m_server;
}

void PulseDesk::OnState(const PulseState& state) {
    if (m_ducking)
        m_ducking->OnState(state);
    const auto of = [](const PulseState& one) {
        return std::tie(one.isThere, one.sinks, one.defaultSink);
    };
    const bool isOther = of(m_last) != of(state);
    m_last = state;
    if (isOther && m_changed)
        m_changed();
}

void PulseDesk::Begin(IScheduler& driver, Borrowings& borrowings) {
    m_ducking =
        std::make_unique<Ducking>(driver, borrowings,
                                  Ducking::Server{[this] { Server().Look(); },
                                                  [this](std::uint32_t stream, const PulseVolume& volume) {
                                                      Server().SetVolume(stream, volume);
                                                  }});
    m_pausing = std::make_unique<Pausing>(borrowings, MediaPlayersOfSession(m_mailbox));
}

void PulseDesk::Close() {
    m_changed = nullptr;
    m_pausing = nullptr;
    m_ducking = nullptr;
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_server)
        m_server->Flush();
}

bool PulseDesk::HasGivenBack() const {
    return m_ducking && m_ducking->HasGivenBack() && m_pausing->HasGivenBack();
}

std::optional<PulseState> PulseDesk::State() {
    return Server().Wait(kAnswer);
}

std::string PulseDesk::WhyNot(const std::string& sink) {
    return WhyNot(std::vector{sink}).front();
}

std::vector<std::string> PulseDesk::WhyNot(const std::vector<std::string>& sinks) {
    std::vector<std::string> reasons;
    try {
        const std::optional<PulseState> state = State();
        for (const std::string& sink : sinks)
            reasons.push_back(state ? ReasonIn(*state, sink) : kNoAnswer);
    } catch (const std::runtime_error& error) {
        reasons.assign(sinks.size(), error.what());
    }
    return reasons;
}

std::shared_ptr<void> PulseDesk::Lower(const std::string& sink, const Duck& duck) {
    const auto number = std::make_shared<unsigned>(0);
    auto lowered = std::make_shared<std::promise<void>>();
    const std::future<void> isLowered = lowered->get_future();
    m_mailbox->Post([self = shared_from_this(), number, sink, duck, lowered = std::move(lowered)] {
        if (!self->m_ducking)
            return;
        *number = self->m_ducking->Hold(sink, duck.decibels, [lowered] { lowered->set_value(); });
        if (duck.isPausing)
            self->m_pausing->Hold();
    });
    std::shared_ptr<void> hold(number.get(), [self = shared_from_this(), number, duck](void* /*number*/) {
        self->m_mailbox->Post([self, number, duck] {
            if (!self->m_ducking)
                return;
            self->m_ducking->Release(*number);
            if (duck.isPausing)
                self->m_pausing->Release();
        });
    });
    (void)isLowered.wait_for(kLowering); // A room that is late for its sound would be worse.
    return hold;
}

} // namespace controller::audio
