#include "controller/media/SoundFinder.h"

#include "controller/audio/SoundFile.h"

#include <exception>
#include <utility>

namespace controller {

SoundFinder::SoundFinder(const std::filesystem::path& folder,
                         TestTone testTone,
                         DigitalAudio::Post post,
                         Log& log)
    : m_folder(folder)
    , m_testTone(std::move(testTone))
    , m_post(std::move(post))
    , m_log(log) {
    m_looking.Submit([this] { LookThrough(); });
}

SoundFinder::~SoundFinder() {
    m_isEnding = true;
}

void SoundFinder::Find(const std::string& path, std::function<void(const DigitalAudio::Located&)> found) {
    m_finding.Submit([this, path, found = std::move(found)] {
        DigitalAudio::Located located;
        try {
            located.file = (TestTone::Is(path) ? m_testTone.File() : m_folder.Find(path)).string();
        } catch (const std::exception& error) {
            located.error = error.what();
        }
        m_post("finding a sound", [located, found] { found(located); });
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
            if (audio::SoundFile(file->path().string()).Duration() > audio::kLongestClip)
                m_log.Warning(file->path().string() +
                              " is longer than 20 s; announcements that play it are cut off");
        } catch (const std::exception& problem) {
            m_log.Warning(problem.what());
        }
    }
}

} // namespace controller
