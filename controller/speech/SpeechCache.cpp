#include "controller/speech/SpeechCache.h"

#include "controller/driver/Durable.h"
#include "controller/speech/Wave.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <utility>
#include <vector>

namespace controller {

namespace fs = std::filesystem;

namespace {

std::string ReadAll(const fs::path& file) {
    std::ostringstream content;
    content << std::ifstream(file, std::ios::binary).rdbuf();
    return content.str();
}

struct Kept {
    fs::file_time_type used;
    std::uintmax_t bytes;
    fs::path file;
};

std::vector<Kept> All(const fs::path& folder) {
    std::vector<Kept> all;
    std::error_code error;
    for (fs::directory_iterator place(folder, error), end; !error && place != end; place.increment(error)) {
        std::error_code gone;
        Kept kept{place->last_write_time(gone), place->file_size(gone), place->path()};
        if (!gone && place->path().extension() == wave::kEnding)
            all.push_back(std::move(kept));
    }
    return all;
}

} // namespace

SpeechCache::SpeechCache(fs::path folder, std::uintmax_t most) : m_folder(std::move(folder)), m_most(most) {
    durable::Draft::Sweep(m_folder);
}

fs::path SpeechCache::FileOf(const std::string& key) const {
    return m_folder / (key + wave::kEnding);
}

std::optional<SpeechCache::Entry> SpeechCache::Find(const std::string& key) const {
    const fs::path file = FileOf(key);
    std::error_code error;
    if (!fs::is_regular_file(file, error))
        return std::nullopt;
    std::size_t samples = 0;
    if (!wave::IsSealed(ReadAll(file), samples)) {
        fs::remove(file, error);
        return std::nullopt;
    }
    // A folder that takes nothing keeps what it has all the same.
    fs::last_write_time(file, fs::file_time_type::clock::now(), error);
    return Entry{file, wave::DurationOf(samples)};
}

SpeechCache::Entry SpeechCache::Keep(const std::string& key, const std::string& file) {
    std::size_t samples = 0;
    (void)wave::IsSealed(file, samples); // it has just been made; its length is what is asked for
    Entry entry{FileOf(key), wave::DurationOf(samples)};
    fs::create_directories(m_folder);
    durable::Draft draft(entry.file, 0600);
    draft.Write(file);
    draft.PlaceUnsynced();
    MakeRoom(entry.file);
    return entry;
}

void SpeechCache::MakeRoom(const fs::path& but) {
    const std::lock_guard lock(m_mutex);
    std::vector<Kept> all = All(m_folder);
    std::sort(all.begin(), all.end(),
              [](const Kept& one, const Kept& other) { return one.used < other.used; });
    std::uintmax_t total = 0;
    for (const Kept& kept : all)
        total += kept.bytes;
    for (const Kept& kept : all) {
        if (total <= m_most)
            return;
        std::error_code error;
        if (kept.file != but && fs::remove(kept.file, error))
            total -= kept.bytes;
    }
}

} // namespace controller
