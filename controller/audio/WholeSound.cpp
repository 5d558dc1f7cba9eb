#include "controller/audio/WholeSound.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace controller::audio {

namespace {

constexpr std::uint32_t kBytesOfSample = 2;
constexpr std::uint32_t kBytesOfFrame = kChannels * kBytesOfSample;
constexpr std::size_t kMostBytes = static_cast<std::size_t>(WholeSound::kMostFrames) * kBytesOfFrame;

void AppendNumber(std::string& bytes, std::uint32_t number, unsigned size) {
    for (unsigned index = 0; index < size; ++index)
        bytes += static_cast<char>((number >> (8 * index)) & 0xffU);
}

std::string HeaderFor(std::size_t dataBytes) {
    const auto size = static_cast<std::uint32_t>(dataBytes);
    std::string bytes = "RIFF";
    AppendNumber(bytes, 36 + size, 4);
    bytes += "WAVEfmt ";
    AppendNumber(bytes, 16, 4);
    AppendNumber(bytes, 1, 2); // plain samples
    AppendNumber(bytes, kChannels, 2);
    AppendNumber(bytes, kRate, 4);
    AppendNumber(bytes, kRate * kBytesOfFrame, 4);
    AppendNumber(bytes, kBytesOfFrame, 2);
    AppendNumber(bytes, 8 * kBytesOfSample, 2);
    bytes += "data";
    AppendNumber(bytes, size, 4);
    return bytes;
}

} // namespace

void WholeSound::Append(const std::vector<float>& samples) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isTooLong = m_isTooLong || m_samples.size() + samples.size() * kBytesOfSample > kMostBytes;
    if (m_isTooLong || m_isOver) {
        m_samples = {};
        return;
    }
    for (const float sample : samples) {
        const long value = std::lrint(std::clamp(sample * 32768.0F, -32768.0F, 32767.0F));
        AppendNumber(m_samples, static_cast<std::uint16_t>(value), kBytesOfSample);
    }
}

bool WholeSound::IsOpen() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return !m_isTooLong && !m_isOver;
}

void WholeSound::End(bool isWhole) {
    std::unique_lock<std::mutex> lock(m_mutex);
    if (std::exchange(m_isOver, true))
        return;
    if (isWhole && !m_isTooLong)
        m_file = std::make_shared<const std::string>(HeaderFor(m_samples.size()) + m_samples);
    m_samples = {};
    const auto listeners = std::exchange(m_listeners, {});
    const File file = m_file;
    lock.unlock();
    for (const Listener& listener : listeners)
        listener(file);
}

void WholeSound::WhenMade(Listener listener) {
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (!m_isOver) {
            m_listeners.push_back(std::move(listener));
            return;
        }
    }
    listener(m_file);
}

} // namespace controller::audio
