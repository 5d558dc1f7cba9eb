#include "controller/media/SoundFinder.h"

#include "controller/audio/SoundFile.h"

#include <exception>
#include <utility>

namespace controller {

SoundFinder::SoundFinder(
    const std::filesystem::path& folder, TestTone testTone, SoundLevels& levels, IScheduler& driver, Log& log)
    : m_folder(folder)
    , m_testTone(std::move(testTone))
    , m_levels(levels)
    , m_driver(driver)
    , m_log(log) {
    m_looking.Submit([this] { LookThrough(); });
}

SoundFinder::~SoundFinder() {
    m_isEnding = true;
}

audio::PlayedSound SoundFinder::Look(const std::string& path) {
    if (TestTone::Is(path))
        return m_testTone.File().string(); // as loud as it is: by it a room's own volume is judged
    const std::filesystem::path file = m_folder.Find(path);
    try {
        return {file.string(), m_levels.Of(file).gain};
    } catch (const audio::SoundFileError&) {
        return file.string(); // whoever plays it says what is wrong
    }
}

void SoundFinder::Answer(const std::function<audio::PlayedSound()>& look, const Found& found) {
    audio::PlayedSound sound("");
    std::string error;
    try {
        sound = look();
    } catch (const std::exception& failure) {
        error = failure.what();
    }
    m_driver.Post("finding a sound", [sound, error, found] { found(sound, error); });
}

void SoundFinder::Find(const std::string& path, Found found) {
    m_finding.Submit([this, path, found = std::move(found)] { Answer([&] { return Look(path); }, found); });
}

void SoundFinder::FindMade(const std::string& path, const std::string& file, Found found) {
    const std::string name = std::filesystem::path(path).filename().string();
    m_finding.Submit([this, name, file, found = std::move(found)] {
        Answer([&] { return audio::PlayedSound(file, m_levels.OfMade(file, name).gain); }, found);
    });
}

void SoundFinder::LookThrough() {
    std::error_code error;
    for (std::filesystem::directory_iterator file(m_folder.Folder(), error), end; !error && file != end;
         file.increment(error)) {
        if (m_isEnding)
            return;
        if (file->path().extension() != ".wav")
            continue;
        try {
            const std::string name = audio::MediaFolder::kPrefix + file->path().filename().string();
            const std::filesystem::path real = m_folder.Find(name);
            if (audio::SoundFile(real.string()).Duration() > audio::kLongestClip)
                m_log.Warning(file->path().string() +
                              " is longer than 20 s; announcements that play it are cut off");
            (void)m_levels.Of(real); // so that nobody waits for it
        } catch (const std::exception& problem) {
            m_log.Warning(problem.what());
        }
    }
}

} // namespace controller
