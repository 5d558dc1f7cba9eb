#include "controller/speech/Wave.h"

#include "controller/audio/ClipReader.h"
#include "controller/audio/SoundFile.h"
#include "controller/audio/SoundFormat.h"
#include "controller/speech/Digest.h"
#include "controller/speech/SpeechError.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>

#include <sys/mman.h>
#include <unistd.h>

namespace controller::wave {

namespace {

constexpr std::size_t kRiff = 12;
constexpr std::size_t kChunk = 8;
constexpr std::size_t kHead = 44;
constexpr std::size_t kLongestSeconds = 300;
constexpr std::size_t kLongest = kLongestSeconds * kRate;
constexpr const char* kTooLong = "lasts more than 300 s";
constexpr const char* kSeal = "seal";

static_assert(audio::kRate == kRate && audio::kChannels == 2);

void Append(std::string& bytes, std::uint32_t number, int size) {
    for (int index = 0; index < size; ++index)
        bytes += static_cast<char>((number >> (8 * index)) & 0xffU);
}

std::uint32_t NumberAt(const std::string& bytes, std::size_t at, int size) {
    std::uint32_t number = 0;
    for (int index = size - 1; index >= 0; --index)
        number = number << 8U | static_cast<unsigned char>(bytes[at + static_cast<std::size_t>(index)]);
    return number;
}

bool IsAt(const std::string& bytes, std::size_t at, const char* word) {
    return bytes.compare(at, std::strlen(word), word) == 0;
}

/// A file in memory, with a path by which it can be opened.
class MemoryFile {
public:
    explicit MemoryFile(const std::string& content) : m_number(::memfd_create("speech", MFD_CLOEXEC)) {
        std::size_t done = 0;
        while (m_number >= 0 && done < content.size()) {
            const ssize_t written = ::write(m_number, content.data() + done, content.size() - done);
            if (written <= 0)
                break;
            done += static_cast<std::size_t>(written);
        }
        if (done == content.size() && m_number >= 0)
            return;
        Close();
        throw SpeechError("there is no memory for what it has said");
    }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile() { Close(); }

    [[nodiscard]] std::string Path() const { return "/proc/self/fd/" + std::to_string(m_number); }

private:
    void Close() const noexcept {
        if (m_number >= 0)
            ::close(m_number);
    }

    const int m_number;
};

std::int16_t Sample(float left, float right) {
    constexpr float kFull = 32767;
    return static_cast<std::int16_t>(std::lround(std::clamp((left + right) / 2, -1.0F, 1.0F) * kFull));
}

Samples Read(const std::string& path) {
    Samples samples;
    const auto reader = audio::OpenClipReader(path);
    while (samples.size() <= kLongest) {
        const std::vector<float> some = reader->Read();
        if (some.empty())
            return samples;
        for (std::size_t index = 0; index + 1 < some.size(); index += 2)
            samples.push_back(Sample(some[index], some[index + 1]));
    }
    throw SpeechError(kTooLong);
}

std::string BytesOf(const Samples& samples) {
    std::string bytes;
    bytes.reserve(samples.size() * 2);
    for (const std::int16_t sample : samples)
        Append(bytes, static_cast<std::uint16_t>(sample), 2);
    return bytes;
}

} // namespace

std::string Of(const Format& format, const std::string& samples) {
    const auto size = static_cast<std::uint32_t>(samples.size());
    const auto frame = static_cast<std::uint32_t>(format.bytes) * format.channels;
    std::string file = "RIFF";
    Append(file, 36 + size, 4);
    file += "WAVEfmt ";
    Append(file, 16, 4);
    Append(file, 1, 2); // PCM
    Append(file, format.channels, 2);
    Append(file, format.rate, 4);
    Append(file, format.rate * frame, 4);
    Append(file, frame, 2);
    Append(file, format.bytes * 8U, 2);
    file += "data";
    Append(file, size, 4);
    return file + samples;
}

std::string Mended(const std::string& file) {
    if (file.size() < kRiff || !IsAt(file, 0, "RIFF") || !IsAt(file, 8, "WAVE"))
        throw SpeechError(file.empty() ? "has said nothing" : "gives what is no WAV file");
    std::size_t frame = 0;
    for (std::size_t at = kRiff; at + kChunk <= file.size();) {
        const std::size_t size = NumberAt(file, at + 4, 4);
        const std::size_t left = file.size() - at - kChunk;
        if (IsAt(file, at, "fmt ") && size >= 16 && left >= 16)
            frame = NumberAt(file, at + kChunk + 12, 2);
        if (IsAt(file, at, "data")) {
            if (frame == 0)
                break;
            // No length at all is one that was not known yet.
            const std::size_t told = size == 0 ? left : std::min(size, left);
            const std::size_t sound = told - told % frame;
            if (sound == 0)
                throw SpeechError("has said nothing");
            std::string mended = file.substr(0, at + kChunk + sound);
            std::string number;
            Append(number, static_cast<std::uint32_t>(sound), 4);
            mended.replace(at + 4, 4, number);
            number.clear();
            Append(number, static_cast<std::uint32_t>(mended.size() - kChunk), 4);
            return mended.replace(4, 4, number);
        }
        at += kChunk + std::min(left, size + size % 2);
    }
    throw SpeechError("gives a WAV file without sound");
}

Samples Decode(const std::string& file) {
    try {
        const MemoryFile memory(file);
        if (audio::SoundFile(memory.Path()).Duration() > std::chrono::seconds(kLongestSeconds))
            throw SpeechError(kTooLong);
        return Read(memory.Path());
    } catch (const audio::SoundFileError& error) {
        // Which number the file has in memory is nobody's business.
        const std::string text = error.what();
        const std::size_t begin = text.find(": ");
        throw SpeechError("gives sound that cannot be read: " +
                          (begin != std::string::npos ? text.substr(begin + 2) : text));
    }
}

Samples DecodeFile(const std::string& path) {
    try {
        return Read(path);
    } catch (const audio::SoundFileError& error) {
        throw SpeechError(std::string("cannot be read: ") + error.what());
    }
}

std::string Sealed(const Samples& samples) {
    std::string file = Of({kRate, 2, 1}, BytesOf(samples));
    const std::string seal = digest::Of(file);
    file += kSeal;
    Append(file, static_cast<std::uint32_t>(seal.size()), 4);
    file += seal;
    std::string size;
    Append(size, static_cast<std::uint32_t>(file.size() - kChunk), 4);
    return file.replace(4, 4, size);
}

bool IsSealed(const std::string& file, std::size_t& samples) {
    if (file.size() < kHead)
        return false;
    const std::size_t size = NumberAt(file, kHead - 4, 4);
    if (size % 2 != 0 || size > file.size())
        return false;
    samples = size / 2;
    std::string inner = file.substr(0, kHead + size);
    std::string number;
    Append(number, static_cast<std::uint32_t>(inner.size() - kChunk), 4);
    inner.replace(4, 4, number);
    std::string whole = inner;
    const std::string seal = digest::Of(inner);
    whole += kSeal;
    Append(whole, static_cast<std::uint32_t>(seal.size()), 4);
    whole += seal;
    number.clear();
    Append(number, static_cast<std::uint32_t>(whole.size() - kChunk), 4);
    return whole.replace(4, 4, number) == file;
}

} // namespace controller::wave
