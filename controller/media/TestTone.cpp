#include "controller/media/TestTone.h"

#include "controller/audio/DemoSounds.h"
#include "controller/audio/MediaFolder.h"

#include <fstream>
#include <stdexcept>

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
    std::ofstream out(m_file, std::ios::binary | std::ios::trunc);
    out.write(content.data(), static_cast<std::streamsize>(content.size())).flush();
    if (!out)
        throw std::runtime_error("the test tone cannot be written to " + m_file.string());
    return m_file;
}

} // namespace controller
