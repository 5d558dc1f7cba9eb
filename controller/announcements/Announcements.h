#pragma once

#include "controller/agent/AgentHost.h"
#include "controller/announcements/Announcement.h"
#include "controller/driver/Alarm.h"
#include "controller/driver/DriverOnly.h"
#include "controller/events/EventFeed.h"
#include "controller/state/StateStore.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace controller {

/// The announcements of the house. Reads answer at once, from records that whoever has one may keep. The
/// agent is the truth: what is asked for goes to it, and the record is then taken anew from its own answer,
/// written to the disk and told. Driver thread only.
class Announcements {
public:
    struct Parts {
        AgentHost& agent;
        IAnnouncementStore& store;
        IScheduler& scheduler;
        EventFeed& feed;
        Log& log;
    };
    struct Outcome {
        AgentAnswer answer;
        AnnouncementPointer announcement; ///< the one that was meant, as it is now; null when there is none
        std::string notSaved;             ///< why the disk does not have the change yet; empty when it has
    };
    using Done = std::function<void(const Outcome&)>;
    using List = std::vector<AnnouncementPointer>;

    /// When they are compared with the agent's: after something that may have changed them unseen, and else.
    static constexpr std::chrono::seconds kSoon{2};
    static constexpr std::chrono::minutes kRound{10};

    /// All are borrowed for life.
    explicit Announcements(Parts parts);
    ~Announcements();

    /// Starts the agent with these rows, and takes everything from it. `areKept`: the disk holds them. Throws
    /// as `AgentHost::Start` does.
    void Begin(const AnnouncementRows& rows, bool areKept);

    /// The announcement that the agent knows by this id; null when there is none.
    [[nodiscard]] AnnouncementPointer Find(std::uint32_t id) const;

    /// All of them but those that are there for one play, by id; later changes are not seen in it.
    [[nodiscard]] std::shared_ptr<const List> All();

    /// All that the agent has.
    [[nodiscard]] List WithPassing() const;

    /// The name of one that is there, or that plays; else empty.
    [[nodiscard]] std::string NameOf(std::uint32_t id) const;

    /// Each calls back once, when what it changed stands on the disk or cannot be written. The agent chooses
    /// the id of what is added, but none that an announcement had since the start; what is replaced is the
    /// one with the record's id.
    void Add(const Announcement& announcement, const Done& done);
    void Replace(const Announcement& announcement, const Done& done);
    void Remove(std::uint32_t id, const Done& done);
    void PutRoom(std::uint32_t id, const Announcement::Room& room, const Done& done);
    void RemoveRoom(std::uint32_t id, std::uint32_t room, const Done& done);
    void PutNavigator(std::uint32_t id, const Announcement::Navigator& navigator, const Done& done);
    void RemoveNavigator(std::uint32_t id, std::uint32_t navigator, const Done& done);

    /// Adds one that is there for one play, of which nobody is told; who adds it removes it. Without waiting
    /// for the disk: left over, it is gone at the next start.
    [[nodiscard]] Outcome AddPassing(Announcement announcement);

    /// Has the agent play the announcement, or put it in its own queue behind what plays. An id that names
    /// none is answered as `Unknown`, without asking the agent to play it.
    void Play(std::uint32_t id, const Done& done);

    /// The same for one of which it has been told that it is asked for.
    void PlayQueued(std::uint32_t id, const Done& done);

    /// Takes the popup of what plays away on every screen.
    void Dismiss(const Done& done);

    /// What the agent takes, as it takes it; but nothing unknown is played, and what is added goes by the id
    /// that the agent answers, whatever id its description carries.
    void Command(const std::string& name, const Parameters& parameters, const Done& done);
    void Request(const std::string& name, const Parameters& parameters, const Done& done);

    /// The agent says that its state has changed.
    void StateInvalidated();

    /// Compares all of them with the agent's own answer. What differs, which nothing may, is an error in the
    /// log and is taken from the agent. Takes long when there are many.
    void Check();

    /// Tells when everything stands on the disk, or why something does not.
    void Save(WriteDone done);

private:
    enum class Change { None, Stored, Removed };

    [[nodiscard]] static Outcome NoneWith(std::uint32_t id);

    void Ask(const char* request,
             const Parameters& parameters,
             std::uint32_t id,
             const HouseAddition* house,
             const Done& done);
    void Settle(AgentAnswer answer, std::uint32_t id, const HouseAddition* house, const Done& done);
    [[nodiscard]] AgentAnswer AskToAdd(const Parameters& parameters);
    [[nodiscard]] Change TakeAnew(std::uint32_t id, const HouseAddition* house = nullptr);
    [[nodiscard]] Change Put(std::uint32_t id, std::optional<Announcement> taken, const HouseAddition* house);
    void Tell(Change change, std::uint32_t id, bool isPassing);
    [[nodiscard]] bool IsPassing(std::uint32_t id) const;
    [[nodiscard]] AnnouncementRow RowOf(std::uint32_t id) const;
    void Write(std::uint32_t id, WriteDone done);
    void Mend(std::uint32_t id);
    void TakePlayed();
    void CheckIn(IScheduler::Duration delay);
    void CheckSome();
    void Take(const Event& event);

    Parts m_parts;
    std::map<std::uint32_t, AnnouncementPointer> m_all; ///< by id
    std::shared_ptr<const List> m_list;                 ///< of all; null when it has to be made
    std::set<std::uint32_t> m_unsaved;                  ///< written, and not yet known to stand on the disk
    /// Asked to be played. Those without a timeout are given one by the agent, when it shows them.
    std::set<std::uint32_t> m_asked;
    std::set<std::uint32_t> m_over;    ///< played since that was looked at last
    std::set<std::uint32_t> m_removed; ///< ids that the agent could hand out once more
    AnnouncementPointer m_playing;
    bool m_isAsking = false;
    std::uint32_t m_checked = 0; ///< the last that was compared with the agent's
    Alarm m_played;
    Alarm m_check;
    EventFeed::Subscription m_subscription;
    DriverOnly m_driverOnly;
};

} // namespace controller
