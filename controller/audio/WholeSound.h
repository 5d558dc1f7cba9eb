#pragma once

#include "controller/audio/SoundFormat.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace controller::audio {

/// The sound of one Play in one piece, for rooms that hand it on: a WAV file of 16 bits, stereo, 48 kHz, made
/// once whatever their number. Filled by the thread that decodes. Any thread.
class WholeSound final {
public:
    using File = std::shared_ptr<const std::string>;
    using Listener = std::function<void(const File& file)>;

    /// What lasts longer has no file.
    static constexpr std::int64_t kMostFrames = std::int64_t{60} * kRate;

    void Append(const std::vector<float>& samples);

    /// Whether it would take more.
    [[nodiscard]] bool IsOpen() const;

    /// That was all.
    void Finish() { End(true); }
    /// That was all, and it should have been more, or nobody wants it any more.
    void Fail() { End(false); }

    /// Calls with the file once it is there; with null when there is none. At once, or on the thread that
    /// decodes.
    void WhenMade(Listener listener);

private:
    void End(bool isWhole);

    mutable std::mutex m_mutex;
    std::string m_samples;
    bool m_isTooLong = false;
    bool m_isOver = false;
    File m_file;
    std::vector<Listener> m_listeners;
};

} // namespace controller::audio
