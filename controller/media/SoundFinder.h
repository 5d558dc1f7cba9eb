#pragma once

#include "controller/audio/MediaFolder.h"
#include "controller/driver/IScheduler.h"
#include "controller/driver/Log.h"
#include "controller/driver/Worker.h"
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
    /// Told the file, or why there is none.
    using Found = std::function<void(const std::string& file, const std::string& error)>;

    /// `driver` and `log` are borrowed for life. Begins to look through the folder.
    SoundFinder(const std::filesystem::path& folder, TestTone testTone, IScheduler& driver, Log& log);
    SoundFinder(const SoundFinder&) = delete;
    SoundFinder& operator=(const SoundFinder&) = delete;
    ~SoundFinder();

    /// Calls back on the driver thread with the file behind the name that the agent gives, or why there is
    /// none.
    void Find(const std::string& path, Found found);

private:
    void LookThrough();

    audio::MediaFolder m_folder;
    TestTone m_testTone;
    IScheduler& m_driver;
    Log& m_log;
    std::atomic<bool> m_isEnding{false};
    // Two, for a look through a large folder must not keep an announcement waiting.
    Worker m_looking;
    Worker m_finding;
};

} // namespace controller
