#include "controller/audio/pulse/PulseDesk.h"

#include "controller/audio/pulse/MediaPlayers.h"

#include <stdexcept>
#include <utility>

namespace controller::audio {

PulseServer& PulseDesk::Server() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_server)
        m_server = std::make_unique<PulseServer>([this, mailbox = m_mailbox](const PulseState& state) {
            mailbox->Post([this, state] {
                if (m_ducking)
                    m_ducking->OnState(state);
            });
        });
    return *m_server;
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
    m_pausing = nullptr;
    m_ducking = nullptr;
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_server)
        m_server->Flush();
}

bool PulseDesk::HasGivenBack() const {
    return m_ducking && m_ducking->HasGivenBack() && m_pausing->HasGivenBack();
}

std::string PulseDesk::WhyNot(const std::string& sink) {
    try {
        return Server().WhyNot(sink, kAnswer);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
}

std::shared_ptr<void> PulseDesk::Lower(const std::string& sink, const Duck& duck) {
    const auto number = std::make_shared<unsigned>(0);
    m_mailbox->Post([self = shared_from_this(), number, sink, duck] {
        if (!self->m_ducking)
            return;
        *number = self->m_ducking->Hold(sink, duck.decibels);
        if (duck.isPausing)
            self->m_pausing->Hold();
    });
    return {number.get(), [self = shared_from_this(), number, duck](void* /*number*/) {
                self->m_mailbox->Post([self, number, duck] {
                    if (!self->m_ducking)
                        return;
                    self->m_ducking->Release(*number);
                    if (duck.isPausing)
                        self->m_pausing->Release();
                });
            }};
}

} // namespace controller::audio
