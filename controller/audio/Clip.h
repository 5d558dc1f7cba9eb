#pragma once

#include "controller/audio/WholeSound.h"

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace controller::audio {

/// The decoded sound of one Play, filled by one thread and read by the rooms' threads. Only a window of it is
/// kept in memory, around the room that is furthest: a room that falls further behind reads silence (it has
/// long been given up by then). Any thread.
class Clip final {
public:
    /// Makes a file of all of it as well. Once, before anybody else has the clip.
    void KeepWhole() { m_whole = std::make_shared<WholeSound>(); }

    /// That file; null when none is made.
    [[nodiscard]] const std::shared_ptr<WholeSound>& Whole() const { return m_whole; }

    /// Adds frames (interleaved); waits while the window is full, unless a file is made of
    /// them. False when nobody wants them any more.
    [[nodiscard]] bool Append(std::vector<float> samples);

    /// That was all.
    void Finish();

    /// That was all, and it should have been more. The first reason stands.
    void Fail(const std::string& reason);

    /// Nobody listens any more: whoever waits returns.
    void Abandon();

    /// Copies `frames` frames from `position` on to `out`, silence where there are none. Waits for frames
    /// that are still to come; when they do not come in time, the clip fails.
    void Read(std::int64_t position, float* out, std::int64_t frames);

    /// The length; nothing as long as it is not known.
    [[nodiscard]] std::optional<std::int64_t> TotalFrames() const;

    [[nodiscard]] bool IsAbandoned() const;
    [[nodiscard]] std::string Error() const;

private:
    struct Chunk {
        std::int64_t begin;
        std::vector<float> samples;
        [[nodiscard]] std::int64_t End() const;
    };

    void End(const std::string& reason);
    void WaitFor(std::int64_t end, std::unique_lock<std::mutex>& lock);
    void DropBehind();

    std::shared_ptr<WholeSound> m_whole;
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<Chunk> m_chunks;
    std::int64_t m_decoded = 0;
    std::int64_t m_furthestRead = 0;
    bool m_isFinished = false;
    bool m_isAbandoned = false;
    std::string m_error;
};

} // namespace controller::audio
