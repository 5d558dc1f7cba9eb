#include "controller/media/SoundFinder.h"

#include "controller/audio/SoundFile.h"

#include <exception>
#include <utility>

namespace controller {

SoundFinder::SoundFinder(const std::filesystem::path& folder, TestTone testTone, IScheduler& driver, Log& log)
    : m_folder(folder)
    , m_testTone(std::move(testTone))
    , m_driver(driver)
    , m_log(log) {
    m_looking.Submit([this] { LookThrough(); });
}

SoundFinder::~SoundFinder() {
    m_isEnding = true;
}

void SoundFinder::Find(const std::string& path, Found found) {
    m_finding.Submit([this, path, found = std::move(found)] {
        std::string file;
        std::string error;
        try {
            file = (TestTone::Is(path) ? m_testTone.File() : m_folder.Find(path)).string();
        } catch (const std::exception& failure) {
            error = failure.what();
        }
        m_driver.Post("finding a sound", [file, error, found] { found(file, error); });
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
            if (audio::SoundFile(m_folder.Find(name).string()).Duration() > audio::kLongestClip)
                m_log.Warning(file->path().string() +
                              " is longer than 20 s; announcements that play it are cut off");
        } catch (const std::exception& problem) {
            m_log.Warning(problem.what());
        }
    }
}

} // namespace controller
