#include "tests/controller/audio/Sounds.h"

#include <cmath>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace controller::audio::test {

std::vector<short> Melody(std::size_t frames, int channels) {
    std::vector<short> samples;
    const double end = static_cast<double>(frames);
    for (std::size_t frame = 0; frame < frames; ++frame) {
        const double at = static_cast<double>(frame);
        for (int channel = 0; channel < channels; ++channel) {
            // A sweep whose phase never is a multiple of pi at either end.
            const double phase = 0.5 + at * (0.02 + 0.03 * at / end) + channel;
            samples.push_back(static_cast<short>(std::lround(20000 * std::sin(phase))));
        }
    }
    for (int channel = 0; channel < channels; ++channel) {
        samples.at(static_cast<std::size_t>(channel)) = 12345;
        samples.at(samples.size() - 1 - static_cast<std::size_t>(channel)) = -12345;
    }
    return samples;
}

void WriteSound(
    const std::string& path, const std::vector<short>& samples, int channels, int rate, int format) {
    SF_INFO info{};
    info.channels = channels;
    info.samplerate = rate;
    info.format = format;
    SNDFILE* file = sf_open(path.c_str(), SFM_WRITE, &info);
    if (!file)
        throw std::runtime_error(path + ": " + sf_strerror(nullptr));
    (void)sf_command(file, SFC_SET_SCALE_INT_FLOAT_WRITE, nullptr,
                     SF_TRUE); // Full scale is 1 in float files.
    const auto frames = static_cast<sf_count_t>(samples.size()) / channels;
    const auto written = sf_writef_short(file, samples.data(), frames);
    sf_close(file);
    if (written != frames)
        throw std::runtime_error(path + ": not written whole");
}

void WriteFloats(const std::string& path, const std::vector<float>& samples, int channels, int rate) {
    SF_INFO info{};
    info.channels = channels;
    info.samplerate = rate;
    info.format = SF_FORMAT_WAV | SF_FORMAT_FLOAT;
    SNDFILE* file = sf_open(path.c_str(), SFM_WRITE, &info);
    if (!file)
        throw std::runtime_error(path + ": " + sf_strerror(nullptr));
    const auto count = static_cast<sf_count_t>(samples.size());
    const auto written = sf_write_float(file, samples.data(), count);
    sf_close(file);
    if (written != count)
        throw std::runtime_error(path + ": not written whole");
}

std::int64_t Recording::Frames() const {
    return channels == 0 ? 0 : static_cast<std::int64_t>(samples.size()) / channels;
}

short Recording::At(std::int64_t frame, int channel) const {
    return samples.at(static_cast<std::size_t>(frame * channels + channel));
}

std::int64_t Recording::First() const {
    for (std::size_t i = 0; i < samples.size(); ++i)
        if (samples[i] != 0)
            return static_cast<std::int64_t>(i) / channels;
    return -1;
}

std::int64_t Recording::Last() const {
    for (std::size_t i = samples.size(); i-- > 0;)
        if (samples[i] != 0)
            return static_cast<std::int64_t>(i) / channels;
    return -1;
}

double Recording::Rms(std::int64_t from, std::int64_t to) const {
    double sum = 0;
    for (std::int64_t frame = from; frame < to; ++frame)
        for (int channel = 0; channel < channels; ++channel)
            sum += std::pow(At(frame, channel), 2);
    return std::sqrt(sum / static_cast<double>((to - from) * channels));
}

Recording ReadRecording(const std::string& path) {
    Recording recording;
    SF_INFO info{};
    SNDFILE* file = sf_open(path.c_str(), SFM_READ, &info);
    if (!file)
        return recording;
    recording.channels = info.channels;
    recording.rate = info.samplerate;
    recording.samples.resize(static_cast<std::size_t>(info.frames * info.channels));
    const auto count = sf_readf_short(file, recording.samples.data(), info.frames);
    recording.samples.resize(static_cast<std::size_t>(count * info.channels));
    sf_close(file);
    return recording;
}

void WriteBytes(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

std::string ReadBytes(const std::string& path) {
    std::ostringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    return bytes.str();
}

} // namespace controller::audio::test
