#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>

#include <sndfile.h>

namespace controller::audio {

/// An announcement's sound may last so long: whoever plays it gives up 20 s after its start.
constexpr std::chrono::milliseconds kLongestClip{20000};

/// The file is no sound file, or a broken one; the text says which file, what is wrong, what would be right.
class SoundFileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The file holds something, but in a format or an encoding that only a decoder plug-in may know.
class UnknownSoundFormat : public SoundFileError {
public:
    using SoundFileError::SoundFileError;
};

struct SndfileCloser {
    void operator()(SNDFILE* file) const { sf_close(file); }
};
using SndfileHandle = std::unique_ptr<SNDFILE, SndfileCloser>;

/// A sound file that was found whole and playable: regular, readable, with all the sound that its header
/// promises. Its place is the beginning. Reads the whole file if its encoding is a compressed one.
class SoundFile final {
public:
    /// @throws SoundFileError, UnknownSoundFormat
    explicit SoundFile(const std::string& path);
    /// The same of a file that people know by another name.
    SoundFile(const std::string& path, const std::string& name);

    [[nodiscard]] std::int64_t Frames() const { return m_info.frames; }
    [[nodiscard]] int Rate() const { return m_info.samplerate; }
    [[nodiscard]] int Channels() const { return m_info.channels; }
    [[nodiscard]] std::chrono::milliseconds Duration() const; ///< Rounded up.

    /// Its own handle, for reading. Borrowed.
    [[nodiscard]] SNDFILE* Handle() const { return m_file.get(); }

private:
    void RequireAllFrames(const std::string& path);

    SF_INFO m_info{};
    SndfileHandle m_file;
};

} // namespace controller::audio
