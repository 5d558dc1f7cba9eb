// Whether rooms would be heard: who is asked, and what playing says of it.
#include "controller/audio/AudioEngine.h"
#include "controller/audio/AudioEngineParts.h"
#include "controller/audio/HealthWatch.h"
#include "controller/audio/Held.h"
#include "controller/audio/Output.h"
#include "controller/audio/page/IPageSpeakers.h"

#include <exception>
#include <system_error>
#include <utility>

namespace controller::audio {

namespace {

Health HealthAfter(const RoomTrouble& trouble) {
    switch (trouble.kind) {
    case RoomTrouble::Kind::Late:
        return {Health::State::Healthy, ""};
    case RoomTrouble::Kind::Silent:
        return {Health::State::Silent, trouble.reason};
    case RoomTrouble::Kind::Refused:
    case RoomTrouble::Kind::Failed:
    case RoomTrouble::Kind::Hanging:
        break;
    }
    return {Health::State::Unheard, trouble.reason};
}

/// Nobody may throw on a thread of the engine.
std::vector<Health>
Asked(const OutputKind& kind, const std::vector<std::string>& texts, const OutputContext& context) {
    try {
        return kind.ask(texts, context);
    } catch (const std::exception& error) {
        return std::vector<Health>(texts.size(), {Health::State::Unheard, error.what()});
    }
}

} // namespace

OutputContext HelpWithoutRoom(const EngineContext& context) {
    return {0,
            0,
            [](const std::string& /*reason*/) {},
            context.devices,
            context.packets,
            context.pulse,
            context.snapcast,
            std::make_shared<Held>(),
            context.services.addresses,
            context.pages};
}

EngineServices AudioEngine::WithHealth(EngineServices services) {
    services.roomTrouble = [this, told = std::move(services.roomTrouble)](const RoomTrouble& trouble) {
        if (trouble.roomId == kTriedRoom)
            return; // Who tries it is told.
        if (m_health)
            m_health->NotHeard(trouble.roomId, HealthAfter(trouble));
        if (told)
            told(trouble);
    };
    return services;
}

void AudioEngine::WatchHealth() {
    std::vector<HealthWatch::Room> rooms;
    rooms.reserve(m_rooms.size());
    for (const auto& [id, room] : m_rooms)
        rooms.push_back({id, room->Config().output});
    const EngineServices& services = m_context->services;
    const auto ask = [this](const std::string& kind, const std::vector<std::string>& texts,
                            const HealthWatch::Answer& answer) {
        return AskKind(kind, texts, answer);
    };
    m_health =
        std::make_unique<HealthWatch>(rooms, HealthWatch::Parts{services.driver, ask, services.roomHealth});
    m_context->pulse->Listen([this] {
        for (const char* const kind : {"pulse", "auto"})
            m_health->LookAgain(kind);
    });
    if (services.pages != nullptr)
        services.pages->Listen([this] { m_health->LookAgain("page"); });
    m_health->Begin();
}

bool AudioEngine::AskKind(const std::string& kind,
                          const std::vector<std::string>& texts,
                          const std::function<void(std::vector<Health>)>& answer) {
    const OutputKind* const row = FindOutputKind(kind);
    if (row == nullptr || row->ask == nullptr)
        return false;
    const EngineContext& context = *m_context;
    const OutputContext help = HelpWithoutRoom(context);
    const auto work = [row, texts, help, mailbox = context.mailbox, answer] {
        mailbox->Post([answer, answers = Asked(*row, texts, help)] { answer(answers); });
    };
    try {
        m_context->workers.Start(work);
    } catch (const std::system_error&) {
        context.mailbox->Post([answer] { answer({}); }); // It is asked again.
    }
    return true;
}

} // namespace controller::audio
