#include "controller/audio/Playback.h"

#include "controller/audio/ClipReader.h"
#include "controller/audio/SoundFormat.h"

#include <exception>
#include <utility>
#include <vector>

namespace controller::audio {

namespace {

/// So much is decoded before the clip starts, so that no room ever waits for the file.
constexpr std::size_t kSamplesBeforeStart = static_cast<std::size_t>(kRate / 4) * kChannels;

} // namespace

WholeSound::File MakeWholeSound(const std::string& path, float factor) {
    WholeSound whole;
    try {
        const auto reader = OpenClipReader(path);
        std::vector<float> samples = reader->Read();
        for (; !samples.empty() && whole.IsOpen(); samples = reader->Read()) {
            Amplify(samples, factor);
            whole.Append(samples);
        }
        whole.Finish();
    } catch (const std::exception&) {
        whole.Fail(); // Who plays it says why.
    }
    WholeSound::File made;
    whole.WhenMade([&made](const WholeSound::File& file) { made = file; });
    return made;
}

Playback::Playback(std::shared_ptr<Timeline> timeline, Order order)
    : m_timeline(std::move(timeline))
    , m_order(std::move(order)) {
    if (m_order.isKeptWhole)
        m_clip->KeepWhole();
}

void Playback::Run() {
    bool hasStarted = false;
    try {
        const auto reader = OpenClipReader(m_order.path);
        std::size_t decoded = 0;
        std::vector<float> samples = reader->Read();
        for (; !samples.empty(); samples = reader->Read()) {
            decoded += samples.size();
            Amplify(samples, m_order.factor);
            if (!m_clip->Append(std::move(samples)))
                return;
            if (!hasStarted && decoded >= kSamplesBeforeStart && !(hasStarted = Start()))
                return;
        }
        m_clip->Finish();
        if (!hasStarted)
            (void)Start(); // When it does not start any more, the rooms have said why.
    } catch (const std::exception& error) {
        m_clip->Fail(error.what());
        if (!hasStarted)
            m_order.onRefused(error.what());
    }
}

bool Playback::Start() {
    const auto begin = m_timeline->StartClip(m_clip, m_order.leadFrames, m_order.readiness);
    if (begin)
        m_order.onStarted(*begin);
    return begin.has_value();
}

} // namespace controller::audio
