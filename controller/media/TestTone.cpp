#include "controller/media/TestTone.h"

#include "controller/audio/DemoSounds.h"
#include "controller/audio/MediaFolder.h"
#include "controller/driver/Durable.h"

namespace controller {

TestTone::TestTone(const std::filesystem::path& folder) : m_file(folder / "test-tone.wav") {}

bool TestTone::Is(const std::string& announcedPath) {
    return announcedPath == std::string(audio::MediaFolder::kPrefix) + kName + ".wav";
}

std::filesystem::path TestTone::File() const {
    const std::string content = demosounds::TestTone();
    std::error_code error;
    if (std::filesystem::file_size(m_file, error) == content.size() && !error)
        return m_file;
    durable::Draft draft(m_file, 0600);
    draft.Write(content);
    draft.Place();
    return m_file;
}

} // namespace controller
