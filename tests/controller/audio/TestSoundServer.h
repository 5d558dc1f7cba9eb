#pragma once

#include "controller/audio/Gst.h"

#include <cstddef>
#include <string>

#include <sys/types.h>

namespace controller::audio::test {

/// A PulseAudio server of the test's own, with one sound device whose sound the test can hear. It keeps
/// everything in its folder, and knows no card of the machine's.
class TestSoundServer final {
public:
    /// Where the server is found once it runs; PULSE_SERVER names that place from now on.
    explicit TestSoundServer(std::string folder);
    ~TestSoundServer();
    TestSoundServer(const TestSoundServer&) = delete;
    TestSoundServer& operator=(const TestSoundServer&) = delete;

    [[nodiscard]] static bool IsInstalled();

    /// Starts it; `IsListening` says when it is there.
    void Start();
    [[nodiscard]] bool IsListening() const;
    /// Ends it without warning, as a crash does: its socket stays behind.
    void Kill();
    /// It stands still, and takes and gives nothing, until it goes on.
    void Pause() const;
    void Resume() const;

    /// Records what its device plays from now on; `IsRecording` says when it does.
    void Record();
    [[nodiscard]] bool IsRecording() const;
    /// Ends the recording, and gives how many of its samples are no silence.
    [[nodiscard]] std::size_t EndRecording();

private:
    const std::string m_folder;
    const std::string m_socket;
    const std::string m_recording;
    pid_t m_process = 0;
    GstPtr<GstElement> m_recorder;
};

} // namespace controller::audio::test
