#include "controller/agent/DeviceManager.h"

#include "controller/agent/DriverHost.h"
#include "framework/CmdMessage.h"
#include "framework/InstanceRegistry.h"
#include "tests/controller/support/EventTexts.h"
#include "tests/controller/support/FakeScheduler.h"
#include "tests/controller/support/NoEngine.h"
#include "tests/controller/support/NoStore.h"
#include "tests/controller/support/TestLog.h"

#include <gtest/gtest.h>

namespace controller {

namespace {

using Texts = std::vector<std::string>;

/// Navigator 5, and room 12 with what stands behind it.
class DeviceManagerTest : public testing::Test {
protected:
    std::int32_t Send(std::uint32_t device, const vq::auto_com<CmdMessage>& message) {
        return m_devices.SendCommandToDevice(device, message.Get(), 0, 0);
    }

    static vq::auto_com<CmdMessage> ShowPopup() {
        auto message = CmdMessage::Create("SHOW_POPUP");
        message->AddParam("MESSAGE", "STRING", "Dinner");
        message->AddParam("IMGURL", "STRING", "table.png");
        message->AddParam("DELAY", "NUMBER", "6000");
        message->AddParam("SHOWOK", "STRING", "true");
        return message;
    }

    FakeScheduler m_scheduler;
    NoStore m_store;
    EventFeed m_feed;
    EventTexts m_events{m_feed};
    TestLog m_log;
    NoEngine m_engine;
    InstanceRegistry m_services;
    Variables m_variables{{{9, 4, "Outside", "cold"}}, m_store, m_feed};
    Popups m_popups{m_scheduler, m_variables, m_feed};
    RoomVolumes m_volumes{
        {{12, "Kitchen", 100, 40}},
        {[](std::uint32_t /*room*/, unsigned /*volume*/) {}, m_store, m_scheduler, m_feed, m_log.log}};
    DigitalAudio m_audio{{m_engine, m_volumes, m_services, m_feed, m_log.log, m_scheduler, {}}};
    RoomProxy m_room{12, m_audio, m_volumes, m_feed};
    int m_invalidations = 0;
    bool m_isStopped = false;
    DeviceManager m_devices{{5},
                            m_popups,
                            m_log.log,
                            {[this] { ++m_invalidations; }, [] { return std::uint64_t{7}; },
                             [this] {
                                 return m_isStopped;
                             }}};
};

TEST_F(DeviceManagerTest, APopupOfWhatWasStoppedIsNotShown) {
    m_isStopped = true;
    EXPECT_EQ(Send(5, ShowPopup()), 0);
    EXPECT_TRUE(m_popups.Standing().empty());
}

TEST_F(DeviceManagerTest, APopupIsShownAsItsParametersSay) {
    EXPECT_EQ(Send(5, ShowPopup()), 0);

    const auto standing = m_popups.Standing();
    ASSERT_EQ(standing.size(), 1U);
    EXPECT_EQ(standing[0].navigator, 5U);
    EXPECT_EQ(standing[0].message, "Dinner");
    EXPECT_EQ(standing[0].image, "table.png");
    EXPECT_EQ(standing[0].remaining, std::chrono::milliseconds(6000));
    EXPECT_TRUE(standing[0].hasOkButton);
    EXPECT_EQ(standing[0].show, 7U);
    EXPECT_EQ(m_events.Take(), Texts{"shown 1 on 5 \"Dinner\" table.png 6000 ok"});
}

TEST_F(DeviceManagerTest, AMessageThatIsBoundToAVariableIsItsValue) {
    auto message = CmdMessage::Create("SHOW_POPUP");
    message->AddVariableParam("MESSAGE", "STRING", 9, 4);

    EXPECT_EQ(Send(5, message), 0);
    EXPECT_EQ(m_popups.Standing().at(0).message, "cold");
    (void)m_variables.Set(9, 4, "warm", [](const std::string& /*error*/) {});
    EXPECT_EQ(m_popups.Standing().at(0).message, "warm");
}

TEST_F(DeviceManagerTest, APopupIsHiddenAgain) {
    (void)Send(5, ShowPopup());
    (void)m_events.Take();

    EXPECT_EQ(Send(5, CmdMessage::Create("HIDE_POPUP")), 0);

    EXPECT_TRUE(m_popups.Standing().empty());
    EXPECT_EQ(m_events.Take(), Texts{"gone 1 on 5 dismissed"});
}

TEST_F(DeviceManagerTest, AnUnknownNavigatorOrCommandIsRefused) {
    EXPECT_EQ(Send(6, ShowPopup()), -1);
    EXPECT_EQ(Send(5, CmdMessage::Create("BLINK")), -1);

    EXPECT_TRUE(m_popups.Standing().empty());
    EXPECT_EQ(m_log.lines,
              Texts{"warning: The announcement wants navigator 6, which the house does not have"});
}

TEST_F(DeviceManagerTest, ARoomIsFoundByItsIdAndInterface) {
    m_devices.AddRoom(12, m_room);
    const auto interfaceOf = [this](std::uint32_t device, const std::string& guid) {
        void* out = this;
        m_devices.GetDeviceInterface(device, guid, &out);
        return out;
    };

    EXPECT_EQ(interfaceOf(12, IRoomProxy::kGuid), static_cast<IRoomProxy*>(&m_room));
    EXPECT_EQ(interfaceOf(12, IDeviceManager::kGuid), nullptr);
    EXPECT_EQ(interfaceOf(13, IRoomProxy::kGuid), nullptr);
}

TEST_F(DeviceManagerTest, OnlyTheAgentsOwnStateConcernsTheHouse) {
    m_devices.InvalidateDeviceState(12);
    EXPECT_EQ(m_invalidations, 0);
    m_devices.InvalidateDeviceState(DriverHost::kDeviceId);
    EXPECT_EQ(m_invalidations, 1);
}

} // namespace

} // namespace controller
