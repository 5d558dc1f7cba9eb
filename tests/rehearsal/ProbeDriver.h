#pragma once

#include "host/IAnnouncementAgent.h"
#include "host/IDigitalAudio.h"
#include "host/ITimerManagerCallback.h"
#include "host/VqBaseAgentDriver.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

/// A driver that does to its host what a scenario's commands say, so that each thing a host can be asked for
/// is seen in the trace alone. Its commands: see `RegisterCommands`.
class ProbeDriver final : public VqBaseAgentDriver, public IAnnouncementAgent, public ITimerManagerCallback {
public:
    explicit ProbeDriver(IInstanceManager& instances);
    ~ProbeDriver() override;

    static std::unique_ptr<VqBaseDriver> Create(IInstanceManager& instances) {
        return std::make_unique<ProbeDriver>(instances);
    }

    /// Logs its arguments at the driver log.
    void Initialize(std::uint32_t reason, VqXML::INode& configuration, VqXML::INode* savedState) override;
    void RegisterCommands() override;
    /// Gives `<kept reason="…"/>` as an element with text.
    vq::auto_com<VqXML::INode> GetPersistState(std::uint32_t reason) override;
    /// Of both kinds: arms a timer again as often as "again" has said.
    void OnTimerExpired(std::uint32_t timerId, std::int32_t context) override;

    void AudioStreamCreated() override { LogMessage(LogLevel::Information, "stream created"); }
    void AudioAnnouncementComplete() override;
    /// True for room 12.
    bool IsRoomInCurrentAnnouncement(std::uint32_t roomId) override { return roomId == 12; }

private:
    using Command = void (ProbeDriver::*)(const ICmdMessage&);

    void On(const char* name, Command command);
    void OnArm(const ICmdMessage& message);
    void OnArmManaged(const ICmdMessage& message);
    void OnAgain(const ICmdMessage& message);
    void OnKill(const ICmdMessage& message);
    void OnKillAll(const ICmdMessage& message);
    void OnAudio(const ICmdMessage& message);
    void OnHold(const ICmdMessage& message);
    void OnRoom(const ICmdMessage& message);
    void OnFind(const ICmdMessage& message);
    void OnSend(const ICmdMessage& message);
    void OnLog(const ICmdMessage& message);
    void OnOwn(const ICmdMessage& message);
    void OnThrow(const ICmdMessage& message);
    void OnWithdraw(const ICmdMessage& message);

    std::uint32_t m_again = 0;
    IDigitalAudio* m_heldAudio = nullptr;
};
