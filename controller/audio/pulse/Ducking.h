#pragma once

#include "controller/audio/Borrowings.h"
#include "controller/audio/pulse/PulseState.h"
#include "controller/driver/Alarm.h"
#include "controller/driver/IScheduler.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace controller::audio {

/// Lowers what other programs play on the sinks that announcements hold, those too that begin meanwhile, and
/// raises it when they let go: in `kSteps` steps, and only what nobody else has set since. What a program
/// plays next gets the volume that it had, although the server remembers the lowered one. Driver thread.
class Ducking final {
public:
    /// The way to the server. Neither waits for it.
    struct Server {
        std::function<void()> look; ///< OnState is called with what there is, soon; as often as it changes.
        std::function<void(std::uint32_t stream, const PulseVolume& volume)> setVolume;
    };

    static constexpr std::chrono::milliseconds kPace{20};
    static constexpr std::chrono::seconds kRetry{1};

    /// Gives back what a former run has left, as soon as the server answers. What is given is borrowed for
    /// life.
    Ducking(IScheduler& driver, Borrowings& borrowings, Server server);
    Ducking(const Ducking&) = delete;
    Ducking& operator=(const Ducking&) = delete;
    /// Raises at once what is lowered.
    ~Ducking();

    /// From now on what plays on the sink is quieter by `decibels` (negative), until `Release` with the
    /// number that comes back. "default" is the sink that the server says. `onLowered` is called once, when
    /// the server has had `kPace` for the last step of what played there, or there is nothing to lower; not
    /// after `Release`.
    [[nodiscard]] unsigned Hold(const std::string& sink, double decibels, std::function<void()> onLowered);
    void Release(unsigned hold);

    void OnState(const PulseState& state);

    /// Whether nothing is lowered, as far as a server that is there knows.
    [[nodiscard]] bool HasGivenBack() const;

private:
    struct Holding {
        std::string sink;
        double decibels = 0;
        std::function<void()> onLowered; ///< empty: has been called
    };
    struct Lowered {
        Borrowed entry;
        PulseVolume before;
        double decibels = 0;
        std::uint32_t sink = 0;
        int step = 0;
        bool isWritten = false; ///< and may be changed
    };

    [[nodiscard]] std::optional<double> DecibelsOn(std::uint32_t sink) const;
    [[nodiscard]] std::optional<Borrowed> EntryFor(const PulseStream& stream) const;
    void Compare(const PulseState& state);
    void Consider(const PulseStream& stream);
    void Lower(const PulseStream& stream, const PulseVolume& before, int step);
    void TakeNew();
    void Move();
    void TellLowered();
    [[nodiscard]] int GoalOf(const Lowered& lowered) const;
    void Strike(const Borrowed& entry) { m_struck.push_back(entry); }

    IScheduler& m_driver;
    Borrowings& m_borrowings;
    const Server m_server;
    unsigned m_lastHold = 0;
    std::map<unsigned, Holding> m_holds;
    PulseState m_state;
    std::map<std::uint32_t, Lowered> m_lowered; ///< by stream
    std::vector<std::uint32_t> m_new;           ///< to be written down
    std::vector<Borrowed> m_struck;             ///< to be struck
    std::set<std::uint32_t> m_left;             ///< as their users have set them in this announcement
    Alarm m_move;
    Alarm m_retry;
    const std::shared_ptr<bool> m_isAlive = std::make_shared<bool>(true);
};

} // namespace controller::audio
