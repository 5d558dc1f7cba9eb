#include "controller/media/OneTimeSounds.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <iterator>
#include <set>
#include <system_error>
#include <utility>

#include <sys/random.h>

namespace controller {

namespace {

std::string UnguessableName() {
    std::array<unsigned char, 16> bytes{};
    if (::getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size()))
        throw std::system_error(errno, std::generic_category(), "no name for a sound");
    static constexpr const char* kDigits = "0123456789abcdef";
    std::string name;
    for (const unsigned char byte : bytes) {
        name += kDigits[byte >> 4U];
        name += kDigits[byte & 0xfU];
    }
    return name + ".wav";
}

} // namespace

OneTimeSounds::OneTimeSounds() : OneTimeSounds(Limits(), &Clock::now) {}

OneTimeSounds::OneTimeSounds(Limits limits, std::function<Clock::time_point()> now)
    : m_limits(limits)
    , m_now(std::move(now)) {}

std::string OneTimeSounds::Add(Sound sound, std::chrono::milliseconds life) {
    if (sound->size() > m_limits.bytes)
        return {};
    std::string name = UnguessableName();
    const std::lock_guard<std::mutex> lock(m_mutex);
    MakeRoom(sound);
    m_entries[name] = {std::move(sound), m_now() + life, ++m_lastNumber};
    return name;
}

void OneTimeSounds::Remove(const std::string& name) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_entries.erase(name);
}

OneTimeSounds::Sound OneTimeSounds::Fetch(const std::string& name) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    DropOld();
    const auto entry = m_entries.find(name);
    if (entry == m_entries.end())
        return nullptr;
    entry->second.wasFetched = true;
    return entry->second.sound;
}

bool OneTimeSounds::WasFetched(const std::string& name) const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto entry = m_entries.find(name);
    return entry != m_entries.end() && entry->second.wasFetched;
}

void OneTimeSounds::MakeRoom(const Sound& sound) {
    DropOld();
    while (!m_entries.empty() && (m_entries.size() >= m_limits.names || Bytes(sound) > m_limits.bytes))
        m_entries.erase(
            std::min_element(m_entries.begin(), m_entries.end(), [](const auto& one, const auto& other) {
                return one.second.number < other.second.number;
            }));
}

void OneTimeSounds::DropOld() {
    const auto now = m_now();
    for (auto entry = m_entries.begin(); entry != m_entries.end();)
        entry = entry->second.end <= now ? m_entries.erase(entry) : std::next(entry);
}

std::size_t OneTimeSounds::Bytes(const Sound& more) const {
    std::set<Sound> different{more};
    for (const auto& [name, entry] : m_entries)
        different.insert(entry.sound);
    std::size_t bytes = 0;
    for (const Sound& one : different)
        bytes += one->size();
    return bytes;
}

} // namespace controller
