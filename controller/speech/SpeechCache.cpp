#include "controller/speech/SpeechCache.h"

#include "controller/speech/Wave.h"

#include <fstream>
#include <sstream>
#include <utility>

namespace controller {

namespace fs = std::filesystem;

namespace {

std::string ReadAll(const fs::path& file) {
    std::ostringstream content;
    content << std::ifstream(file, std::ios::binary).rdbuf();
    return content.str();
}

} // namespace

SpeechCache::SpeechCache(fs::path folder, std::uintmax_t most) : m_kept(std::move(folder), most) {}

fs::path SpeechCache::FileOf(const std::string& key) const {
    return m_kept.Path() / (key + wave::kEnding);
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
    (void)m_kept.Use(file.filename().string()); // it is there
    return Entry{file, wave::DurationOf(samples)};
}

SpeechCache::Entry SpeechCache::Keep(const std::string& key, const std::string& file) {
    std::size_t samples = 0;
    (void)wave::IsSealed(file, samples); // it has just been made; its length is what is asked for
    Entry entry{FileOf(key), wave::DurationOf(samples)};
    m_kept.Keep(entry.file.filename().string(), file);
    return entry;
}

} // namespace controller
