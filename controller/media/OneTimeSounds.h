#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace controller {

/// Sounds that whoever knows their name may fetch for a short while: a player in the house that has no token.
/// A name has 128 bits that nobody can guess. Any thread.
class OneTimeSounds {
public:
    using Clock = std::chrono::steady_clock;
    using Sound = std::shared_ptr<const std::string>;

    /// What is oldest goes when there is more. One sound under several names counts once.
    struct Limits {
        std::size_t names = 4096;
        std::size_t bytes = std::size_t{64} * 1024 * 1024;
    };

    OneTimeSounds();
    OneTimeSounds(Limits limits, std::function<Clock::time_point()> now);

    /// Gives the name, "32 HEXADECIMAL DIGITS.wav"; empty for a sound that is too large. Throws
    /// `std::system_error` when the system has no chance to give.
    [[nodiscard]] std::string Add(Sound sound, std::chrono::milliseconds life);

    /// Who has begun to fetch it goes on.
    void Remove(const std::string& name);

    /// Null for a name that there is not, or no longer.
    [[nodiscard]] Sound Fetch(const std::string& name);

    [[nodiscard]] bool WasFetched(const std::string& name) const;

private:
    struct Entry {
        Sound sound;
        Clock::time_point end;
        std::uint64_t number = 0; ///< in the order in which they came
        bool wasFetched = false;
    };
    using Entries = std::map<std::string, Entry>;

    void MakeRoom(const Sound& sound);
    void DropOld();
    [[nodiscard]] std::size_t Bytes(const Sound& more) const;

    const Limits m_limits;
    const std::function<Clock::time_point()> m_now;
    mutable std::mutex m_mutex;
    Entries m_entries;
    std::uint64_t m_lastNumber = 0;
};

} // namespace controller
