#pragma once

#include "controller/audio/ISoundEngine.h"
#include "controller/audio/MediaFolder.h"
#include "controller/driver/IScheduler.h"
#include "controller/driver/Log.h"
#include "controller/driver/Worker.h"
#include "controller/media/SoundLevels.h"
#include "controller/media/TestTone.h"

#include <atomic>
#include <filesystem>
#include <functional>
#include <string>

namespace controller {

/// Finds the sounds of the media folder, and the test tone, away from the driver thread, and looks once
/// through all of them for those that cannot be played whole.
class SoundFinder {
public:
    /// Told the sound, or why there is none.
    using Found = std::function<void(const audio::PlayedSound& sound, const std::string& error)>;

    /// `levels`, `driver` and `log` are borrowed for life. Begins to look through the folder, and measures
    /// what has not been.
    SoundFinder(const std::filesystem::path& folder,
                TestTone testTone,
                SoundLevels& levels,
                IScheduler& driver,
                Log& log);
    SoundFinder(const SoundFinder&) = delete;
    SoundFinder& operator=(const SoundFinder&) = delete;
    ~SoundFinder();

    /// Calls back on the driver thread with the file behind the name that the agent gives, or why there is
    /// none.
    void Find(const std::string& path, Found found);

    /// The same for a sound of this name whose file has been made elsewhere.
    void FindMade(const std::string& path, const std::string& file, Found found);

private:
    [[nodiscard]] audio::PlayedSound Look(const std::string& path);
    void Answer(const std::function<audio::PlayedSound()>& look, const Found& found);
    void LookThrough();

    audio::MediaFolder m_folder;
    TestTone m_testTone;
    SoundLevels& m_levels;
    IScheduler& m_driver;
    Log& m_log;
    std::atomic<bool> m_isEnding{false};
    // Two, for a look through a large folder must not keep an announcement waiting.
    Worker m_looking;
    Worker m_finding;
};

} // namespace controller
