#include "agent/AnnouncementAgent.h"
#include "tests/host/Slots.h"
#include "tests/support/AgentTest.h"
#include "tests/support/AnnouncementTest.h"

#include <gtest/gtest.h>

#include <new>

// Tables with a destructor: it takes two slots, the complete object's and the deleting one.

namespace {

using Destructor = void (*)(void*);
using DataIn = void (VqBaseDriver::*)(std::uint32_t, int, const unsigned char*, unsigned);
using PacketIn = void (VqBaseDriver::*)(std::uint32_t, int, const IVqProtocolPacket&);

constexpr std::size_t kDriverDestructor = 5;
constexpr std::size_t kAnnouncementDestructor = 1;

TEST(DriverSlotsTest, OperationsInFrontOfTheDestructorAreInOrder) {
    EXPECT_EQ(Slots(&VqBaseDriver::AddRef, &VqBaseDriver::Release, &VqBaseDriver::QueryInterface,
                    &VqBaseDriver::BoundCall, &VqBaseDriver::OnBindingChanged),
              Consecutive(5));
}

TEST(DriverSlotsTest, IdentityAndLifeFollowTheTwoSlotsOfTheDestructorInOrder) {
    EXPECT_EQ(Slots(&VqBaseDriver::GetRoomId, &VqBaseDriver::GetDeviceId, &VqBaseDriver::GetDeviceName,
                    &VqBaseDriver::GetDeviceType, &VqBaseDriver::GetDeviceRoomNameAddr,
                    &VqBaseDriver::GetDeviceStateAddr, &VqBaseDriver::SetRoomName,
                    &VqBaseDriver::HaveBeenIdentified, &VqBaseDriver::LateInitialize,
                    &VqBaseDriver::GetMultiplicity, &VqBaseDriver::Initialize, &VqBaseDriver::OnDriverAdded,
                    &VqBaseDriver::OnDestroy, &VqBaseDriver::RemovedFromProject, &VqBaseDriver::OnAVRoomOff),
              Consecutive(15, 7));
}

TEST(DriverSlotsTest, DescriptionStateAndRequestsFollowInOrder) {
    EXPECT_EQ(Slots(&VqBaseDriver::GetIdentifyStrings, &VqBaseDriver::GetModel, &VqBaseDriver::GetControlTag,
                    &VqBaseDriver::GetStringNameDriver, &VqBaseDriver::GetStringNameProxy,
                    &VqBaseDriver::OnDriverNameChanged, &VqBaseDriver::GetCapabilities,
                    &VqBaseDriver::GetPersistState, &VqBaseDriver::GetEvents, &VqBaseDriver::ExecuteCommand,
                    &VqBaseDriver::GetInitializeData, &VqBaseDriver::TestCondition, &VqBaseDriver::UIRequest),
              Consecutive(13, 22));
}

TEST(DriverSlotsTest, AudioVideoAndDeviceFollowInOrder) {
    EXPECT_EQ(Slots(&VqBaseDriver::OnAVSelected, &VqBaseDriver::OnAVReSelected, &VqBaseDriver::OnAVDeselected,
                    &VqBaseDriver::OnAVAddLocationInfo, &VqBaseDriver::IsAVOutputToInputValid,
                    &VqBaseDriver::IsAVMultiSelect, &VqBaseDriver::IsAVSourceAvailable,
                    &VqBaseDriver::GetDriverType, &VqBaseDriver::GetDeviceCommon, &VqBaseDriver::GetDeviceIP,
                    &VqBaseDriver::OnRoomNameChanged, &VqBaseDriver::GetDeviceBindingInfo,
                    &VqBaseDriver::GetEventLabel, &VqBaseDriver::VmAdd, &VqBaseDriver::VmRemove,
                    &VqBaseDriver::OnVariableChanged),
              Consecutive(16, 35));
}

TEST(DriverSlotsTest, DataTimersAndRegistrationsFollowInOrderWithBothKindsOfData) {
    EXPECT_EQ(Slots(&VqBaseDriver::OnConnectionStatusChanged, static_cast<DataIn>(&VqBaseDriver::OnDataIn),
                    static_cast<PacketIn>(&VqBaseDriver::OnDataIn), &VqBaseDriver::OnPoll,
                    &VqBaseDriver::OnNetworkBound, &VqBaseDriver::OnEventFired, &VqBaseDriver::OnTimerExpired,
                    &VqBaseDriver::OnNetworkBindingChanged, &VqBaseDriver::RegisterCommands,
                    &VqBaseDriver::RegisterConditionals, &VqBaseDriver::RegisterVariables,
                    &VqBaseDriver::UnregisterVariables),
              Consecutive(12, 51));
}

TEST(DriverSlotsTest, DeletingDestructorStandsBehindTheCompleteOne) {
    FakeHost host;
    auto* const driver = AnnouncementAgent::Create(host);
    ASSERT_NE(host.Face(), nullptr);

    TableEntry<Destructor>(driver, kDriverDestructor + 1)(driver);

    EXPECT_EQ(host.Face(), nullptr);
}

TEST(DriverSlotsTest, CompleteDestructorLeavesTheMemory) {
    FakeHost host;
    alignas(AnnouncementAgent) std::byte memory[sizeof(AnnouncementAgent)];
    auto* const agent = new (memory) AnnouncementAgent(host);

    TableEntry<Destructor>(agent, kDriverDestructor)(agent);

    EXPECT_EQ(host.Face(), nullptr);
}

TEST(AgentSlotsTest, BaseDriverIsTheFirstBaseAndTheAgentFaceTheSecond) {
    FakeHost host;
    AnnouncementAgent agent(host);

    const auto* const first = reinterpret_cast<const std::byte*>(&agent);
    EXPECT_EQ(reinterpret_cast<const std::byte*>(static_cast<VqBaseDriver*>(&agent)), first);
    EXPECT_EQ(reinterpret_cast<const std::byte*>(static_cast<IAnnouncementAgent*>(&agent)),
              first + sizeof(VqBaseAgentDriver));
}

TEST(AgentSlotsTest, OverridesStandInTheBaseDriversSlots) {
    // In the agent's table they keep their place.
    EXPECT_EQ(Slots(&AnnouncementAgent::Initialize, &AnnouncementAgent::GetPersistState,
                    &AnnouncementAgent::OnTimerExpired, &AnnouncementAgent::RegisterCommands),
              (std::vector<std::size_t>{17, 29, 57, 59}));
}

TEST(AgentSlotsTest, ItsFacesOperationsStandBehindAllOfTheBaseDrivers) {
    EXPECT_EQ(Slots(&AnnouncementAgent::AudioStreamCreated, &AnnouncementAgent::AudioAnnouncementComplete,
                    &AnnouncementAgent::IsRoomInCurrentAnnouncement),
              Consecutive(3, 63));
}

class AgentTableTest : public AgentTest {
protected:
    template <class Function>
    Function Entry(std::size_t slot) const {
        return TableEntry<Function>(static_cast<const VqBaseDriver*>(m_agent.get()), slot);
    }
};

TEST_F(AgentTableTest, ItsFacesOperationsAreReachedThroughThePrimaryTable) {
    using Callback = void (*)(void*);
    using Question = bool (*)(void*, std::uint32_t);
    Start("<s><a><id>1</id><rooms><room><id>12</id></room></rooms><navigators/></a></s>");
    Execute("1");

    EXPECT_EQ(CallsOf([&] { Entry<Callback>(63)(m_agent.get()); }),
              (Lines{"ITimerManager.KillTimer(0)", "IRoomProxy.SetUpAudio(12)",
                     "ITimerManager.AddTimer(1, 2) = 2"}));
    EXPECT_EQ(CallsOf([&] { Entry<Callback>(64)(m_agent.get()); }),
              (Lines{"ILogger.Log(6, Announcement audio complete - Delaying to ensure that the client has "
                     "finished.)",
                     "ITimerManager.KillTimer(0)", "ITimerManager.AddTimer(2, 2) = 3"}));
    EXPECT_TRUE(Entry<Question>(65)(m_agent.get(), 12));
    EXPECT_FALSE(Entry<Question>(65)(m_agent.get(), 13));
}

class AnnouncementSlotsTest : public AnnouncementTest {};

TEST_F(AnnouncementSlotsTest, TimerExpiryStandsFirst) {
    EXPECT_EQ(Slot(&Announcement::OnTimerExpired), 0U);
}

TEST_F(AnnouncementSlotsTest, DestructorStandsBehindTimerExpiry) {
    const auto document = ParseXml("<announcement><navigators/></announcement>");
    auto* const announcement = new Announcement(m_host.Helper(), m_host, *document->GetRootNode());
    const auto destroy = TableEntry<Destructor>(announcement, kAnnouncementDestructor + 1);

    EXPECT_EQ(CallsOf([&] { destroy(announcement); }), (Lines{"ITimerManager.KillAllTimers()"}));
}

} // namespace
