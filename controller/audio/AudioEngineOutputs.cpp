// Places that are no rooms of the house: which there are, and what is heard there.
#include "controller/audio/AudioEngine.h"
#include "controller/audio/AudioEngineParts.h"
#include "controller/audio/Output.h"
#include "controller/audio/OutputSearch.h"

#include <exception>
#include <system_error>
#include <utility>

namespace controller::audio {

namespace {

/// So long a place may take for its sound.
constexpr std::chrono::seconds kTryTime{15};
/// So long an announcement waits for a place that was tried to be free again.
constexpr std::chrono::seconds kCourtesy{1};

std::vector<FoundOutput>
FoundBy(const OutputKind& kind, const std::vector<std::string>& texts, const OutputContext& context) {
    try {
        return kind.find(texts, context);
    } catch (const std::exception&) {
        return {}; // Rooms say why; here is only what there is.
    }
}

} // namespace

void AudioEngine::FindOutputs(const std::function<void(const std::vector<FoundOutput>&)>& found) {
    if (!m_search)
        m_search = std::make_unique<OutputSearch>(
            m_context->services.driver, KindsThatFind(),
            [this](const std::string& kind, const OutputSearch::Found& told) { FindOf(kind, told); });
    m_search->Find(found);
}

void AudioEngine::FindOf(const std::string& kind,
                         const std::function<void(const std::vector<FoundOutput>&)>& told) {
    std::vector<std::string> texts;
    for (const auto& [id, room] : m_rooms)
        if (room->Config().output.kind == kind)
            texts.push_back(room->Config().output.text);
    const auto mailbox = m_context->mailbox;
    const auto work = [row = FindOutputKind(kind), texts = std::move(texts),
                       help = HelpWithoutRoom(*m_context), mailbox, told] {
        mailbox->Post([told, places = FoundBy(*row, texts, help)] { told(places); });
    };
    try {
        m_context->workers.Start(work);
    } catch (const std::system_error&) {
        mailbox->Post([told] { told({}); });
    }
}

void AudioEngine::TryOutput(const OutputDescription& output,
                            const PlayedSound& sound,
                            unsigned volume,
                            const OnTried& onTried) {
    std::string refusal;
    if (m_try)
        refusal = "another output is being tested";
    else if (m_stream)
        refusal = "an announcement is playing";
    else if (m_hangingTries.size() >= m_context->limits.hangingPerRoom)
        refusal = "the outputs of earlier tests still hang";
    if (!refusal.empty()) {
        m_context->mailbox->Post([onTried, refusal] { onTried(refusal); });
        return;
    }
    RoomConfig config;
    config.id = kTriedRoom;
    config.name = TextOf(output);
    config.output = output;
    config.volume = volume;
    m_rooms[kTriedRoom] =
        std::make_unique<RoomOutput>(std::move(config), m_context, [this] { PostRoomChange(); });
    m_try = std::make_unique<Try>(m_context->services.driver, onTried);
    OpenStream({});
    AddRoom(kTriedRoom);
    Play(sound, [this](const PlayResult& result) {
        if (!m_try || m_try->isOver)
            return;
        const std::string& trouble = m_rooms.at(kTriedRoom)->LastTrouble();
        EndTry(result.error.empty() || trouble.empty() ? result.error : trouble);
    });
    m_try->patience.Start(kTryTime, [this] { EndTry("it took too long"); });
}

void AudioEngine::EndTry(const std::string& trouble) {
    if (std::exchange(m_try->isOver, true))
        return;
    m_try->patience.Stop();
    m_context->mailbox->Post([onTried = m_try->onTried, trouble] { onTried(trouble); });
    CloseStream([this] { TryClosed(); });
}

void AudioEngine::TryClosed() {
    auto room = m_rooms.extract(kTriedRoom);
    // What hangs may still have something to say to it.
    if (room.mapped()->IsHanging())
        m_hangingTries.push_back(std::move(room.mapped()));
    const auto tried = std::exchange(m_try, nullptr);
    if (tried->next)
        tried->next();
}

/// A device that is still being closed could not be opened by the announcement's own room.
void AudioEngine::AfterTry(std::function<void()> task) {
    if (!m_try || !m_try->isOver) {
        m_context->mailbox->Post(std::move(task));
        return;
    }
    m_try->next = std::move(task);
    m_try->patience.Start(kCourtesy, [this] {
        if (const auto next = std::exchange(m_try->next, nullptr))
            next();
    });
}

} // namespace controller::audio
