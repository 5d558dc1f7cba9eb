#pragma once

#include "controller/agent/DigitalAudio.h"
#include "controller/audio/MediaFolder.h"
#include "controller/driver/Worker.h"
#include "controller/log/Log.h"
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
    /// `log` is borrowed for life. Begins to look through the folder.
    SoundFinder(const std::filesystem::path& folder, TestTone testTone, DigitalAudio::Post post, Log& log);
    SoundFinder(const SoundFinder&) = delete;
    SoundFinder& operator=(const SoundFinder&) = delete;
    ~SoundFinder();

    /// Calls back on the driver thread with the file behind the name that the agent gives, or why there is
    /// none.
    void Find(const std::string& path, std::function<void(const DigitalAudio::Located&)> found);

private:
    void LookThrough();

    audio::MediaFolder m_folder;
    TestTone m_testTone;
    DigitalAudio::Post m_post;
    Log& m_log;
    std::atomic<bool> m_isEnding{false};
    // Two, for a look through a large folder must not keep an announcement waiting.
    Worker m_looking;
    Worker m_finding;
};

} // namespace controller
