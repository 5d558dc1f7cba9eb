#pragma once

#include "controller/audio/Loudness.h"

#include <filesystem>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace controller {

/// How loud each sound is, and by which gain it is played, so that all are heard alike. A sound is measured
/// once, and again when its file is another; the file stays as it is. Looks into the file system, so none of
/// it is for the driver thread, but for what goes by the name alone; any other thread may call, several at
/// once.
class SoundLevels {
public:
    /// What is known of one sound, and kept.
    struct Entry {
        std::string name; ///< of its file
        std::string file; ///< what tells the file from another one; empty: not measured yet
        audio::Loudness loudness;
        bool isAsItIs = false; ///< somebody has said that it is to be played so
    };
    struct Level {
        audio::Loudness loudness;
        double gain = 0; ///< dB, as it is played
        bool isAsItIs = false;
    };
    struct Parts {
        std::vector<Entry> entries;
        bool isHouseAsItIs = false;
        /// Told what has to be kept, on the thread that found it.
        std::function<void(const Entry&)> keep;
    };

    explicit SoundLevels(Parts parts);

    /// Measures the sound where that is not known. Throws `audio::SoundFileError` for what cannot be played.
    [[nodiscard]] Level Of(const std::filesystem::path& file);

    /// The same of a file that is made of something else, and of which nothing is kept; `name` is the one
    /// under which people know the sound.
    [[nodiscard]] Level OfMade(const std::filesystem::path& file, const std::string& name);

    /// What is known of the file without measuring it.
    [[nodiscard]] std::optional<Level> Known(const std::filesystem::path& file) const;

    /// By the file's name. What has to be kept is given back.
    [[nodiscard]] Entry SetAsItIs(const std::string& name, bool isAsItIs);

    /// The sound is gone: another one of its name is another one.
    void Forget(const std::string& name);

    /// As it was last measured, if it was.
    [[nodiscard]] std::optional<Level> LevelOf(const std::string& name) const;

private:
    [[nodiscard]] Level LevelOf(const Entry& entry) const;

    const bool m_isHouseAsItIs;
    const std::function<void(const Entry&)> m_keep;
    mutable std::mutex m_mutex;
    std::map<std::string, Entry> m_entries;
    std::map<std::string, Entry> m_made; ///< by path; the last few
};

} // namespace controller
