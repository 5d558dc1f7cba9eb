#pragma once

#include "controller/agent/AgentHost.h"
#include "controller/events/EventFeed.h"
#include "controller/state/StateKeeper.h"

#include <functional>
#include <map>
#include <string>

namespace controller {

/// The way to the agent for console and network: delivers commands and requests, and answers a request only
/// when what it changed stands on the disk. Driver thread only.
class AnnouncementService {
public:
    struct Outcome {
        AgentAnswer answer;
        std::string notSaved; ///< why the disk does not have the change yet; empty when it has
    };
    using Done = std::function<void(const Outcome&)>;

    /// All are borrowed for life.
    AnnouncementService(AgentHost& agent, StateKeeper& keeper, EventFeed& feed);

    /// Plays the announcement with this id, or queues it behind what plays. An id that names none is answered
    /// as `Unknown`, without asking the agent to play it.
    void Play(std::uint32_t announcement, const Done& done);

    /// Takes the popup of what plays away on every screen.
    void Dismiss(const Done& done);

    void Command(const std::string& name, const Parameters& parameters, const Done& done);
    void Request(const std::string& name, const Parameters& parameters, const Done& done);

    /// The element of one announcement, under "element" of the answer; it has no "id" when there is none.
    [[nodiscard]] AgentAnswer Announcement(std::uint32_t announcement);

    /// The name of an announcement that has been played; empty when it has none.
    [[nodiscard]] std::string NameOf(std::uint32_t announcement) const;

    /// How many announcements the agent holds.
    [[nodiscard]] std::size_t Count();

private:
    bool LearnName(std::uint32_t announcement);
    void PublishChange(const std::string& request, std::uint32_t announcement);

    AgentHost& m_agent;
    StateKeeper& m_keeper;
    EventFeed& m_feed;
    std::map<std::uint32_t, std::string> m_names;
};

} // namespace controller
