#include "controller/audio/Clip.h"

#include "controller/audio/SoundFormat.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace controller::audio {

namespace {

constexpr std::int64_t kFramesAhead = std::int64_t{3} * kRate;
/// A room that leaves early for its own long buffer is as far ahead of the others as the longest silence
/// before a clip; and one that stalls is not given up at once.
constexpr std::int64_t kFramesBehind = std::int64_t{12} * kRate;
constexpr std::chrono::milliseconds kPatience{1000};

} // namespace

std::int64_t Clip::Chunk::End() const {
    return begin + static_cast<std::int64_t>(samples.size()) / kChannels;
}

bool Clip::Append(std::vector<float> samples) {
    if (m_whole)
        m_whole->Append(samples);
    const bool isInAHurry = m_whole && m_whole->IsOpen();
    std::unique_lock<std::mutex> lock(m_mutex);
    m_changed.wait(lock,
                   [&] { return isInAHurry || m_isAbandoned || m_decoded < m_furthestRead + kFramesAhead; });
    if (m_isAbandoned || m_isFinished)
        return false;
    m_chunks.push_back({m_decoded, std::move(samples)});
    m_decoded = m_chunks.back().End();
    m_changed.notify_all();
    return true;
}

void Clip::Finish() {
    End({});
    if (m_whole)
        m_whole->Finish();
}

void Clip::Fail(const std::string& reason) {
    End(reason);
    if (m_whole)
        m_whole->Fail();
}

void Clip::End(const std::string& reason) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_isFinished)
        m_error = reason;
    m_isFinished = true;
    m_changed.notify_all();
}

void Clip::Abandon() {
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isAbandoned = true;
        m_changed.notify_all();
    }
    if (m_whole)
        m_whole->Fail();
}

void Clip::WaitFor(std::int64_t end, std::unique_lock<std::mutex>& lock) {
    const auto isThere = [&] {
        return m_isFinished || m_isAbandoned || m_decoded >= end;
    };
    if (m_changed.wait_for(lock, kPatience, isThere))
        return;
    m_isFinished = true;
    m_error = "the file cannot be read as fast as it plays";
    m_changed.notify_all();
}

void Clip::Read(std::int64_t position, float* out, std::int64_t frames) {
    std::unique_lock<std::mutex> lock(m_mutex);
    const std::int64_t end = position + frames;
    if (end > m_furthestRead) {
        m_furthestRead = end;
        m_changed.notify_all();
    }
    WaitFor(end, lock);
    std::fill_n(out, frames * kChannels, 0.0F);
    for (const Chunk& chunk : m_chunks) {
        const std::int64_t from = std::max(position, chunk.begin);
        const std::int64_t to = std::min(end, chunk.End());
        if (from < to)
            std::copy_n(chunk.samples.begin() + (from - chunk.begin) * kChannels, (to - from) * kChannels,
                        out + (from - position) * kChannels);
    }
    DropBehind();
}

void Clip::DropBehind() {
    while (!m_chunks.empty() && m_chunks.front().End() < m_furthestRead - kFramesBehind)
        m_chunks.pop_front();
}

std::optional<std::int64_t> Clip::TotalFrames() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_isFinished ? std::optional<std::int64_t>(m_decoded) : std::nullopt;
}

bool Clip::IsAbandoned() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_isAbandoned;
}

std::string Clip::Error() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_error;
}

} // namespace controller::audio
