#pragma once

#include "controller/audio/AudioEngine.h"
#include "controller/audio/Borrowings.h"
#include "controller/audio/snapcast/ISnapcastServer.h"
#include "controller/audio/snapcast/SnapcastState.h"
#include "controller/driver/Alarm.h"
#include "controller/driver/IScheduler.h"

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace controller::audio {

/// Clients of one Snapcast server that announcements hold: each is taken out of a group with clients that are
/// not held, and its group is given the announcements' stream and its volume. When it is let go, all that is
/// still as it was set goes back to what it was; so does what a former run has left, and what a server has
/// that comes back. Driver thread.
class SnapcastLoans final {
public:
    /// Called once, one of the two.
    struct Listener {
        std::function<void(const SnapcastState& state)> ready; ///< The client hears the stream.
        std::function<void(RoomTrouble::Kind kind, const std::string& reason)> failed;
    };

    struct Wish {
        std::string client;
        std::string stream;
        unsigned percent = 0;
    };

    static constexpr std::chrono::milliseconds kAnswer{1500};
    static constexpr std::chrono::milliseconds kRetry{1000};
    /// So long a client may still play what it has of the stream that was taken from it.
    static constexpr std::chrono::milliseconds kCut{100};
    /// As often it is tried to give something back to a server that is there and refuses, or does nothing.
    static constexpr unsigned kMostAttempts = 5;

    /// `name` of the server is for people and for what is written down. What is given is borrowed for life.
    SnapcastLoans(
        IScheduler& driver, Log& log, Borrowings& borrowings, ISnapcastServer& server, std::string name);
    SnapcastLoans(const SnapcastLoans&) = delete;
    SnapcastLoans& operator=(const SnapcastLoans&) = delete;
    ~SnapcastLoans() = default;

    /// The number is for what follows. `listener.failed` may be called when it has been ready, too.
    [[nodiscard]] unsigned Hold(Wish wish, Listener listener);
    void SetVolume(unsigned hold, unsigned percent);

    /// `isCut`: what the client still has of the stream is not to be heard.
    void Release(unsigned hold, bool isCut);

    void OnState(const SnapcastState& state);

    /// Lets go of all, and tells the server at once, without a look at what it has; what is being changed in
    /// that moment stays written down.
    void GiveBackNow();

    /// Whether nothing is left to be given back.
    [[nodiscard]] bool HasGivenBack() const { return Entries().empty(); }

private:
    struct Held {
        Held(IScheduler& driver, Wish theWish, Listener theListener);
        Wish wish;
        Listener listener;
        Alarm patience;
        std::optional<unsigned> writtenPercent; ///< Everything is written down, and may be changed.
        bool isAsking = false;
        bool isReady = false;
    };

    /// What a client is being given back.
    struct Returning {
        unsigned calls = 0; ///< that are not answered yet
        bool isRefused = false;
    };

    /// To give a client back; none has been seen to succeed.
    struct Attempts {
        unsigned count = 0;
        bool isSaidDone = false;
    };

    [[nodiscard]] std::vector<Borrowed> Entries() const;
    [[nodiscard]] std::vector<Borrowed> EntriesOf(const std::string& client) const;
    [[nodiscard]] bool IsHeld(const std::string& client) const;
    [[nodiscard]] bool IsUnderWay(const std::string& client) const;
    [[nodiscard]] bool IsBesideHeld(const std::string& client) const;
    [[nodiscard]] bool IsShared(const SnapcastGroup& group) const;
    [[nodiscard]] std::vector<std::string> NotHeld(const SnapcastGroup& group) const;
    void FailAll(const SnapcastState& state);
    void Fail(unsigned hold, RoomTrouble::Kind kind, const std::string& reason);
    void Step(unsigned hold);
    void Write(unsigned hold);
    [[nodiscard]] std::vector<Borrowed> EntriesFor(const Wish& wish) const;
    void Change(unsigned hold);
    [[nodiscard]] ISnapcastServer::Answered OnAnswer(unsigned hold, const std::string& what);

    void GiveBack();
    void GiveBackOf(const std::string& client);
    void GiveBack(const Borrowed& entry);
    void Cut(const std::string& client);
    void OnGivenBack(const std::string& client, const std::string& error);

    IScheduler& m_driver;
    Log& m_log;
    Borrowings& m_borrowings;
    ISnapcastServer& m_server;
    const std::string m_name;
    SnapcastState m_state;
    unsigned m_lastHold = 0;
    std::map<unsigned, std::unique_ptr<Held>> m_holds;
    std::multiset<std::string> m_changing;        ///< clients of changes for them that are not answered yet
    std::set<std::string> m_cut;                  ///< clients that have been cut off just now
    std::map<std::string, Returning> m_returning; ///< by client
    std::map<std::string, Attempts> m_attempts;   ///< by client
    Alarm m_settled;
    Alarm m_retry;
    const std::shared_ptr<bool> m_isAlive = std::make_shared<bool>(true);
};

} // namespace controller::audio
