#include "controller/media/SoundLevels.h"

#include <utility>

#include <sys/stat.h>

namespace controller {

namespace {

/// Changes with the file; empty where there is none.
std::string IdentityOf(const std::filesystem::path& file) {
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0)
        return {};
    return std::to_string(status.st_size) + "-" + std::to_string(status.st_mtim.tv_sec) + "-" +
           std::to_string(status.st_mtim.tv_nsec);
}

} // namespace

SoundLevels::SoundLevels(Parts parts) : m_isHouseAsItIs(parts.isHouseAsItIs), m_keep(std::move(parts.keep)) {
    for (Entry& entry : parts.entries)
        m_entries[entry.name] = std::move(entry);
}

SoundLevels::Level SoundLevels::LevelOf(const Entry& entry) const {
    const bool isAsItIs = entry.isAsItIs || m_isHouseAsItIs;
    return {entry.loudness, isAsItIs ? 0 : audio::GainFor(entry.loudness), entry.isAsItIs};
}

std::optional<SoundLevels::Level> SoundLevels::Known(const std::filesystem::path& file) const {
    const std::string identity = IdentityOf(file);
    const std::lock_guard lock(m_mutex);
    const auto place = m_entries.find(file.filename().string());
    if (identity.empty() || place == m_entries.end() || place->second.file != identity)
        return std::nullopt;
    return LevelOf(place->second);
}

SoundLevels::Level SoundLevels::Of(const std::filesystem::path& file) {
    if (const auto known = Known(file))
        return *known;
    // Before the measuring: a file that changes meanwhile is measured again the next time.
    const std::string identity = IdentityOf(file);
    const audio::Loudness loudness = audio::MeasureLoudness(file.string());
    Entry measured;
    {
        const std::lock_guard lock(m_mutex);
        Entry& entry = m_entries[file.filename().string()];
        entry.name = file.filename().string();
        entry.file = identity;
        entry.loudness = loudness;
        measured = entry;
    }
    if (m_keep)
        m_keep(measured);
    return LevelOf(measured);
}

SoundLevels::Level SoundLevels::OfMade(const std::filesystem::path& file, const std::string& name) {
    constexpr std::size_t kMostMade = 256;
    const std::string identity = IdentityOf(file);
    std::unique_lock lock(m_mutex);
    const auto named = m_entries.find(name);
    const bool isAsItIs = named != m_entries.end() && named->second.isAsItIs;
    auto made = m_made.find(file.string());
    if (made == m_made.end() || made->second.file != identity) {
        lock.unlock();
        const audio::Loudness loudness = audio::MeasureLoudness(file.string());
        lock.lock();
        if (m_made.size() >= kMostMade)
            m_made.clear();
        made = m_made.insert_or_assign(file.string(), Entry{name, identity, loudness, false}).first;
    }
    Entry entry = made->second;
    entry.isAsItIs = isAsItIs;
    return LevelOf(entry);
}

std::optional<SoundLevels::Level> SoundLevels::LevelOf(const std::string& name) const {
    const std::lock_guard lock(m_mutex);
    const auto place = m_entries.find(name);
    return place != m_entries.end() && !place->second.file.empty() ? std::optional(LevelOf(place->second))
                                                                   : std::nullopt;
}

void SoundLevels::Forget(const std::string& name) {
    const std::lock_guard lock(m_mutex);
    m_entries.erase(name);
}

SoundLevels::Entry SoundLevels::SetAsItIs(const std::string& name, bool isAsItIs) {
    const std::lock_guard lock(m_mutex);
    Entry& entry = m_entries[name];
    entry.name = name;
    entry.isAsItIs = isAsItIs;
    return entry;
}

} // namespace controller
