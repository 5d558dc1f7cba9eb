#include "framework/IDriverHost.h"
#include "host/CmdDispatcher.h"
#include "host/IAnnouncementAgent.h"
#include "host/ICmdReturn.h"
#include "host/IDeviceManager.h"
#include "host/IDigitalAudio.h"
#include "host/IDocument.h"
#include "host/IDriverHelperV2.h"
#include "host/IInstanceManager.h"
#include "host/ILogger.h"
#include "host/INode.h"
#include "host/IRoomProxy.h"
#include "host/ITimerManager.h"
#include "host/IVqProtocolPacket.h"
#include "host/UICmdDispatcher.h"
#include "tests/host/Slots.h"

#include <gtest/gtest.h>

namespace {

class Plain {
public:
    void Operation() {}
};

TEST(InterfaceSlotsTest, OperationThatIsNotVirtualHasNoSlot) {
    EXPECT_EQ(Slot(&Plain::Operation), kNoSlot);
}

TEST(InterfaceSlotsTest, AnnouncementAgentFaceHasItsThreeOperationsInOrder) {
    EXPECT_EQ(Slots(&IAnnouncementAgent::AudioStreamCreated, &IAnnouncementAgent::AudioAnnouncementComplete,
                    &IAnnouncementAgent::IsRoomInCurrentAnnouncement),
              Consecutive(3));
}

TEST(InterfaceSlotsTest, DeviceManagerSendsInvalidatesAndFindsInOrder) {
    EXPECT_EQ(Slots(&IDeviceManager::SendCommandToDevice, &IDeviceManager::InvalidateDeviceState,
                    &IDeviceManager::GetDeviceInterface),
              Consecutive(3));
}

TEST(InterfaceSlotsTest, RoomProxyHasItsSixOperationsInOrder) {
    EXPECT_EQ(Slots(&IRoomProxy::SetUpAudio, &IRoomProxy::SetAudioVolume, &IRoomProxy::RestoreAudioState,
                    &IRoomProxy::SetUpVideo, &IRoomProxy::RestoreVideoState,
                    &IRoomProxy::CancelRestoringState),
              Consecutive(6));
}

TEST(InterfaceSlotsTest, DigitalAudioCreatesReleasesAndPlaysInOrder) {
    EXPECT_EQ(Slots(&IDigitalAudio::CreateStream, &IDigitalAudio::ReleaseStream, &IDigitalAudio::PlayFile),
              Consecutive(3));
}

TEST(InterfaceSlotsTest, TimerManagerAddsKillsAndKillsAllInOrder) {
    EXPECT_EQ(Slots(&ITimerManager::AddTimer, &ITimerManager::KillTimer, &ITimerManager::KillAllTimers),
              Consecutive(3));
}

TEST(InterfaceSlotsTest, LoggerHasOneOperation) {
    EXPECT_EQ(Slots(&ILogger::Log), Consecutive(1));
}

TEST(InterfaceSlotsTest, TimerCallbackHasOneOperation) {
    EXPECT_EQ(Slots(&ITimerManagerCallback::OnTimerExpired), Consecutive(1));
}

TEST(InterfaceSlotsTest, InstanceManagerQueriesRegistersAndUnregistersInOrder) {
    EXPECT_EQ(Slots(&IInstanceManager::QueryInterface, &IInstanceManager::RegisterInterface,
                    &IInstanceManager::UnregisterInterface),
              Consecutive(3));
}

TEST(InterfaceSlotsTest, DispatchersRegisterInOrder) {
    EXPECT_EQ(Slots(&CmdDispatcher::RegisterCmd0, &CmdDispatcher::RegisterCmd1), Consecutive(2));
    EXPECT_EQ(Slots(&UICmdDispatcher::RegisterUICmd), Consecutive(1));
}

TEST(InterfaceSlotsTest, CommandMessageIsCountedNamedReadAndFilledInOrder) {
    EXPECT_EQ(Slots(&ICmdMessage::AddRef, &ICmdMessage::Release, &ICmdMessage::GetName,
                    &ICmdMessage::GetParam, &ICmdMessage::GetParamAsULong, &ICmdMessage::AddParam,
                    &ICmdMessage::AddVariableParam),
              Consecutive(7));
}

TEST(InterfaceSlotsTest, HelperOfAnnouncementsHasTheDeviceIdBehindMakingMessages) {
    EXPECT_EQ(Slots(&IDriverHelper::CreateCmdMessage), Consecutive(1));
    EXPECT_EQ(Slots(&IDriverHelperV2::CreateCmdMessage, &IDriverHelperV2::GetDeviceId), Consecutive(2));
}

TEST(InterfaceSlotsTest, NodeIsCountedReadFilledAndWalkedInOrder) {
    using VqXML::INode;
    EXPECT_EQ(Slots(&INode::AddRef, &INode::Release, &INode::GetChildValue, &INode::GetChildValueAsLong,
                    &INode::GetChildValueAsULong, &INode::GetChildValueAsBool, &INode::AddChildString,
                    &INode::AddChildLong, &INode::AddChildULong, &INode::AddChildBool, &INode::AppendChild,
                    &INode::FindChild, &INode::GetChildren, &INode::SetNameAndValue, &INode::GetName,
                    &INode::GetValue),
              Consecutive(16));
}

TEST(InterfaceSlotsTest, ChildListHasFirstAndNextInOrder) {
    EXPECT_EQ(Slots(&VqXML::INodeList::First, &VqXML::INodeList::Next), Consecutive(2));
}

TEST(InterfaceSlotsTest, DocumentIsCountedAndGivesItsRootInOrder) {
    EXPECT_EQ(Slots(&VqXML::IDocument::AddRef, &VqXML::IDocument::Release, &VqXML::IDocument::GetRootNode),
              Consecutive(3));
}

TEST(InterfaceSlotsTest, CommandResultAndProtocolPacketHaveTheirOperationsInOrder) {
    EXPECT_EQ(Slots(&ICmdReturn::AddResult), Consecutive(1));
    EXPECT_EQ(Slots(&IVqProtocolPacket::GetData, &IVqProtocolPacket::GetSize), Consecutive(2));
}

TEST(InterfaceSlotsTest, DriverHostHasItsOperationsInOrder) {
    EXPECT_EQ(Slots(&IDriverHost::GetHelper, &IDriverHost::AddTimer, &IDriverHost::ForgetDriver,
                    &IDriverHost::FireEvent, &IDriverHost::LogMessage, &IDriverHost::InvalidateState,
                    &IDriverHost::HandlerRegistered, &IDriverHost::HandlerMissing),
              Consecutive(8));
}

} // namespace
