#include "controller/audio/SoundFile.h"

#include "controller/audio/RiffCheck.h"

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace controller::audio {

namespace {

constexpr int kLowestRate = 4000;
constexpr int kHighestRate = 384'000;
constexpr int kMostChannels = 8;

class Descriptor final {
public:
    explicit Descriptor(int number) : m_number(number) {}
    ~Descriptor() {
        if (m_number >= 0)
            close(m_number);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    [[nodiscard]] int Get() const { return m_number; }
    [[nodiscard]] int Release() { return std::exchange(m_number, -1); }

private:
    int m_number;
};

/// Opens without waiting: a FIFO in the media folder must not hold the reader.
int OpenRegular(const std::string& path, const std::string& name, std::int64_t& size) {
    Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)); // NOLINT(*-vararg)
    if (file.Get() < 0) {
        const std::error_code error(errno, std::generic_category());
        throw SoundFileError(name + (error == std::errc::no_such_file_or_directory
                                         ? ": there is no such sound file"
                                         : ": cannot be read: " + error.message()));
    }
    struct stat status {};
    if (fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode))
        throw SoundFileError(name + ": not a regular file");
    if (status.st_size == 0)
        throw SoundFileError(name + ": an empty file; a sound file (WAV) is needed");
    size = status.st_size;
    return file.Release();
}

bool IsPlainPcm(int format) {
    switch (format & SF_FORMAT_SUBMASK) {
    case SF_FORMAT_PCM_S8:
    case SF_FORMAT_PCM_U8:
    case SF_FORMAT_PCM_16:
    case SF_FORMAT_PCM_24:
    case SF_FORMAT_PCM_32:
    case SF_FORMAT_FLOAT:
    case SF_FORMAT_DOUBLE:
    case SF_FORMAT_ULAW:
    case SF_FORMAT_ALAW:
        return (format & SF_FORMAT_TYPEMASK) == SF_FORMAT_WAV ||
               (format & SF_FORMAT_TYPEMASK) == SF_FORMAT_WAVEX;
    default:
        return false;
    }
}

bool IsUnknownFormat(int error) {
    // Malformed means: a known format, broken. The library has many more codes than its header names; all of
    // those mean something that it does not know, and somebody else may.
    return error != SF_ERR_MALFORMED_FILE && error != SF_ERR_SYSTEM;
}

void RequirePlayable(const SF_INFO& info, const std::string& name) {
    if (info.samplerate < kLowestRate || info.samplerate > kHighestRate)
        throw SoundFileError(name + ": has a sample rate of " + std::to_string(info.samplerate) +
                             " Hz; 8000 to 192000 Hz are usual");
    if (info.channels < 1 || info.channels > kMostChannels)
        throw SoundFileError(name + ": has " + std::to_string(info.channels) +
                             " channels; 1 (mono) to 8 (7.1) can be played");
    if (info.frames <= 0)
        throw SoundFileError(name + ": holds no sound");
}

} // namespace

SoundFile::SoundFile(const std::string& path)
    : SoundFile(path, std::filesystem::path(path).filename().string()) {}

SoundFile::SoundFile(const std::string& path, const std::string& name) {
    std::int64_t size = 0;
    Descriptor file(OpenRegular(path, name, size));
    RequireWholeRiff(file.Get(), size, name);
    lseek(file.Get(), 0, SEEK_SET);
    m_file.reset(sf_open_fd(file.Get(), SFM_READ, &m_info, SF_TRUE));
    // The library closes the descriptor in either case.
    (void)file.Release();
    if (!m_file) {
        const std::string text = name + ": not a playable sound file: " + sf_strerror(nullptr);
        if (IsUnknownFormat(sf_error(nullptr)))
            throw UnknownSoundFormat(text);
        throw SoundFileError(text);
    }
    RequirePlayable(m_info, name);
    if (!IsPlainPcm(m_info.format))
        RequireAllFrames(name);
}

void SoundFile::RequireAllFrames(const std::string& path) {
    constexpr sf_count_t kFramesAtOnce = 4096;
    std::vector<float> frames(static_cast<std::size_t>(kFramesAtOnce * m_info.channels));
    sf_count_t total = 0;
    while (const sf_count_t count = sf_readf_float(m_file.get(), frames.data(), kFramesAtOnce))
        total += count;
    if (total < m_info.frames || sf_error(m_file.get()) != SF_ERR_NO_ERROR)
        throw SoundFileError(path + ": truncated or damaged: its header promises " +
                             std::to_string(m_info.frames) + " samples, only " + std::to_string(total) +
                             " can be decoded");
    if (sf_seek(m_file.get(), 0, SEEK_SET) != 0)
        throw SoundFileError(path + ": cannot be read from its beginning again");
}

std::chrono::milliseconds SoundFile::Duration() const {
    return std::chrono::milliseconds((m_info.frames * 1000 + m_info.samplerate - 1) / m_info.samplerate);
}

} // namespace controller::audio
