#include "controller/audio/page/PageDesk.h"

namespace controller::audio {

namespace {

/// Nobody fetches a sound whose life ends meanwhile.
constexpr std::chrono::seconds kFresh = PageDesk::kLife / 2;

} // namespace

void PageDesk::Begin(IScheduler& driver, IPageSpeakers& speakers, ISoundAddresses& addresses) {
    m_driver = &driver;
    m_speakers = &speakers;
    m_addresses = &addresses;
}

void PageDesk::Close() {
    if (m_speakers != nullptr)
        m_speakers->Listen(nullptr);
    m_speakers = nullptr;
}

std::optional<PageSound> PageDesk::Offer(const WholeSound::File& file) {
    if (m_speakers == nullptr || !file)
        return std::nullopt;
    const bool isKnown =
        m_file && m_driver->Now() < m_offered + kFresh && (m_file == file || *m_file == *file);
    if (isKnown)
        return m_sound;
    const std::string path = m_addresses->Offer(file, kLife);
    if (path.empty())
        return std::nullopt;
    m_file = file;
    m_offered = m_driver->Now();
    m_sound = {m_sound.number + 1, path};
    return m_sound;
}

} // namespace controller::audio
