#pragma once

#include "announcement/Announcement.h"
#include "host/IAnnouncementAgent.h"
#include "host/VqBaseAgentDriver.h"

#include <boost/shared_ptr.hpp>

#include <cstdint>
#include <deque>
#include <map>
#include <string>

/// The driver: every stored announcement, the queue of those that wait to play, and the one that plays.
///
/// Entry and lifecycle stand in AnnouncementAgent.cpp, the queue in AnnouncementAgentQueue.cpp, the requests
/// in AnnouncementAgentHandlers.cpp, saving and loading in AnnouncementAgentPersistence.cpp. Everything runs
/// on the host's driver thread; nothing is locked.
class AnnouncementAgent : public VqBaseAgentDriver, public IAnnouncementAgent {
public:
    /// The kind of a reply; every value but `Success` makes a "fail".
    enum class ReturnCode : int { Success = 0, Failure = 1 };

    /// The factory that the module hands out; the caller owns the agent.
    [[nodiscard]] static VqBaseDriver* Create(IInstanceManager& instances);

    /// Publishes the agent's `IAnnouncementAgent` face; the destructor withdraws it.
    explicit AnnouncementAgent(IInstanceManager& instances);
    ~AnnouncementAgent() override;

    /// Reads the stored announcements from the saved state, if there is one.
    void Initialize(std::uint32_t reason, VqXML::INode& configuration, VqXML::INode* savedState) override;
    [[nodiscard]] vq::auto_com<VqXML::INode> GetPersistState(std::uint32_t reason) override;
    /// The poll, once a second while something plays: moves on to the next in the queue when it is complete.
    void OnTimerExpired(std::uint32_t timerId, std::int32_t context) override;
    void RegisterCommands() override;

    // The playing announcement's callbacks; without one they do nothing and answer false.
    void AudioStreamCreated() override;
    void AudioAnnouncementComplete() override;
    bool IsRoomInCurrentAnnouncement(std::uint32_t roomId) override;

    /// Forgets every stored and queued announcement; the one that plays goes on.
    void ClearAllAnnouncements();

    // The queue.

    void OnCmdExecuteAnnouncement(const ICmdMessage& message);
    void OnCmdAnnouncementDismissed();
    /// Starts the announcement, or queues its id while another plays. Id 0 goes on with what is there: it
    /// starts the front of the queue, or executes the playing announcement again.
    void ExecuteAnnouncement(std::uint32_t id);
    [[nodiscard]] bool IsAnnouncementInQueue(std::uint32_t id) const;
    /// The announcement stored under this id, empty when there is none and for id 0.
    [[nodiscard]] boost::shared_ptr<Announcement> GetAnnouncementFromID(std::uint32_t id) const;

    // The requests. Each gives its reply; what is thrown as `const char*` is left to the host.

    [[nodiscard]] vq::auto_com<VqXML::INode> OnReqAddAnnouncement(const ICmdMessage& message);
    [[nodiscard]] vq::auto_com<VqXML::INode> OnReqRemoveAnnouncement(const ICmdMessage& message);
    [[nodiscard]] vq::auto_com<VqXML::INode> OnReqModifyAnnouncement(const ICmdMessage& message);
    [[nodiscard]] vq::auto_com<VqXML::INode> OnReqAddRoom(const ICmdMessage& message);
    [[nodiscard]] vq::auto_com<VqXML::INode> OnReqModifyRoom(const ICmdMessage& message);
    [[nodiscard]] vq::auto_com<VqXML::INode> OnReqRemoveRoom(const ICmdMessage& message);
    [[nodiscard]] vq::auto_com<VqXML::INode> OnReqAddNavigator(const ICmdMessage& message);
    [[nodiscard]] vq::auto_com<VqXML::INode> OnReqRemoveNavigator(const ICmdMessage& message);
    [[nodiscard]] vq::auto_com<VqXML::INode> OnReqGetAnnouncements(const ICmdMessage& message);
    [[nodiscard]] vq::auto_com<VqXML::INode> OnReqGetAnnouncement(const ICmdMessage& message);

    /// A reply: an element "success" or "fail" with this text, or with this element as its only child.
    [[nodiscard]] static vq::auto_com<VqXML::INode> CreateReturn(ReturnCode code, const std::string& text);
    [[nodiscard]] static vq::auto_com<VqXML::INode> CreateReturn(ReturnCode code,
                                                                 const vq::auto_com<VqXML::INode>& element);

    /// The announcement that the request's "id" names, empty when there is none.
    [[nodiscard]] boost::shared_ptr<Announcement>
    GetAnnouncementFromCmdMessage(const ICmdMessage& message) const;

    // Saving and loading.

    /// A new "announcements" element with every stored announcement, by ascending id.
    [[nodiscard]] vq::auto_com<VqXML::INode> toXml();
    /// Adds the announcements of such an element, each under its own id; of several with one id the first
    /// stays.
    void fromXml(VqXML::INode* node);
    /// The lowest free id from where the counter stands. It stays free until something is stored under it.
    [[nodiscard]] std::uint32_t GetNextAnnouncementID();

private:
    using Handler = vq::auto_com<VqXML::INode> (AnnouncementAgent::*)(const ICmdMessage&);

    template <class Action>
    [[nodiscard]] vq::auto_com<VqXML::INode>
    Edit(const ICmdMessage& message, const char* unknownId, Action action) const;
    [[nodiscard]] vq::auto_com<VqXML::INode> Fail(const std::string& text) const;

    std::map<std::uint32_t, boost::shared_ptr<Announcement>> m_announcements;
    std::uint32_t m_nextAnnouncementId = 1;
    std::deque<std::uint32_t> m_queue;
    boost::shared_ptr<Announcement> m_currentAnnouncement;
    std::uint32_t m_pollTimerId = 0;
};
