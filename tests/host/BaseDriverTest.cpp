#include "framework/InstanceRegistry.h"
#include "host/VqBaseDriver.h"
#include "tests/support/FakeHost.h"
#include "tests/support/Lines.h"
#include "tests/support/TestMessage.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

class NoResult final : public ICmdReturn {
public:
    void AddResult(const std::string& name, const std::string& /*value*/) override { FAIL() << name; }
};

class NoPacket final : public IVqProtocolPacket {
public:
    [[nodiscard]] const unsigned char* GetData() const override { return nullptr; }
    [[nodiscard]] std::size_t GetSize() const override { return 0; }
};

/// A driver that overrides nothing, and offers what drivers call on themselves.
class BareDriver final : public VqBaseDriver {
public:
    explicit BareDriver(IInstanceManager& instances,
                        DriverMultiplicity multiplicity = DriverMultiplicity::Single)
        : VqBaseDriver(instances, multiplicity) {}

    using VqBaseDriver::AddTimer;
    using VqBaseDriver::DmInvalidateState;
    using VqBaseDriver::FireEvent;
    using VqBaseDriver::GetHelper;
    using VqBaseDriver::GetInstanceManager;
    using VqBaseDriver::LogMessage;
};

/// A driver whose constructor arms a timer and throws.
class FailingDriver final : public VqBaseDriver {
public:
    explicit FailingDriver(IInstanceManager& instances)
        : VqBaseDriver(instances, DriverMultiplicity::Single) {
        AddTimer(10, Milliseconds);
        throw std::runtime_error("no such driver");
    }
};

class BaseDriverTest : public testing::Test {
protected:
    FakeHost m_host;
    BareDriver m_driver{m_host};
    TestMessage m_message{"anything"};
};

TEST_F(BaseDriverTest, DescribesItselfWithNothing) {
    EXPECT_EQ(m_driver.GetRoomId(), 0U);
    for (const std::string& text :
         {m_driver.GetDeviceName(), m_driver.GetDeviceType(), m_driver.GetDeviceRoomNameAddr(),
          m_driver.GetDeviceStateAddr(), m_driver.GetIdentifyStrings(), m_driver.GetModel(),
          m_driver.GetControlTag(), m_driver.GetStringNameDriver(), m_driver.GetStringNameProxy(),
          m_driver.GetDriverType(), m_driver.GetDeviceIP(), m_driver.GetEventLabel(7)})
        EXPECT_EQ(text, "");
    EXPECT_FALSE(m_driver.GetCapabilities());
    EXPECT_FALSE(m_driver.GetPersistState(0));
    EXPECT_FALSE(m_driver.GetEvents());
    EXPECT_FALSE(m_driver.GetInitializeData());
    EXPECT_FALSE(m_driver.GetDeviceCommon());
    EXPECT_FALSE(m_driver.GetDeviceBindingInfo());
}

TEST_F(BaseDriverTest, AnswersQuestionsWithNo) {
    EXPECT_FALSE(m_driver.HaveBeenIdentified());
    EXPECT_FALSE(m_driver.TestCondition(m_message));
    EXPECT_FALSE(m_driver.UIRequest(m_message));
    EXPECT_FALSE(m_driver.IsAVOutputToInputValid(1, 2));
    EXPECT_FALSE(m_driver.IsAVMultiSelect());
    EXPECT_FALSE(m_driver.IsAVSourceAvailable(1));
    int anything = 0;
    void* found = &anything;
    m_driver.QueryInterface(IAnnouncementAgent::kGuid, &found);
    EXPECT_EQ(found, nullptr);
}

TEST_F(BaseDriverTest, TakesEveryLifecycleCallAndCallsNobody) {
    const auto node = VqXML::CreateXmlNode("configuration", "");
    m_driver.LateInitialize();
    m_driver.Initialize(0, *node, nullptr);
    m_driver.Initialize(0, *node, node.Get());
    m_driver.OnDriverAdded();
    m_driver.OnDestroy();
    m_driver.RemovedFromProject();
    m_driver.SetRoomName("Kitchen");
    m_driver.OnDriverNameChanged("Announcements");
    m_driver.OnRoomNameChanged(12, "Kitchen");
    m_driver.RegisterCommands();
    m_driver.RegisterConditionals();
    m_driver.RegisterVariables();
    m_driver.UnregisterVariables();

    EXPECT_EQ(m_host.Take(), Lines{});
}

TEST_F(BaseDriverTest, TakesEveryNotificationAndCallsNobody) {
    const auto node = VqXML::CreateXmlNode("info", "");
    NoResult result;
    const unsigned char byte = 0;
    m_driver.BoundCall(1, m_message);
    m_driver.OnBindingChanged(1, true);
    m_driver.ExecuteCommand(m_message, nullptr, 0);
    m_driver.ExecuteCommand(m_message, &result, 0);
    m_driver.OnAVRoomOff(12);
    m_driver.OnAVSelected(12, 1);
    m_driver.OnAVReSelected(12, 1);
    m_driver.OnAVDeselected(12, 1);
    m_driver.OnAVAddLocationInfo(12, *node);
    m_driver.VmAdd(1, "variable", "value");
    m_driver.VmRemove(1);
    m_driver.OnVariableChanged(9, 1, "value");
    m_driver.OnConnectionStatusChanged(1, true);
    m_driver.OnDataIn(1, 80, &byte, 1);
    m_driver.OnDataIn(1, 80, NoPacket());
    m_driver.OnPoll(1);
    m_driver.OnNetworkBound(1, "192.0.2.1");
    m_driver.OnEventFired(9, 1);
    m_driver.OnTimerExpired(1, 0);
    m_driver.OnNetworkBindingChanged(1, false);

    EXPECT_EQ(m_host.Take(), Lines{});
    EXPECT_EQ(node->GetChildren()->First(), nullptr);
}

TEST_F(BaseDriverTest, CountsReferencesWithoutDyingOfThem) {
    EXPECT_EQ(m_driver.AddRef(), 2U);
    EXPECT_EQ(m_driver.Release(), 1U);
    EXPECT_EQ(m_driver.Release(), 0U);
    EXPECT_EQ(m_driver.GetModel(), "");
}

TEST_F(BaseDriverTest, KeepsMultiplicityAndInstanceManager) {
    const BareDriver multiple(m_host, DriverMultiplicity::Multiple);

    EXPECT_EQ(m_driver.GetMultiplicity(), DriverMultiplicity::Single);
    EXPECT_EQ(multiple.GetMultiplicity(), DriverMultiplicity::Multiple);
    EXPECT_EQ(m_driver.GetInstanceManager(), &m_host);
}

TEST_F(BaseDriverTest, HasTheHelpersDeviceId) {
    m_host.driverHost.helper.deviceId = 4711;

    EXPECT_EQ(m_driver.GetDeviceId(), 4711U);
    EXPECT_EQ(&m_driver.GetHelper(), &m_host.driverHost.helper);
}

TEST_F(BaseDriverTest, ServicesReachTheDriverHost) {
    EXPECT_EQ(m_driver.AddTimer(1000, Milliseconds), 1U);
    m_driver.FireEvent(5);
    m_driver.LogMessage(Error, "it failed");
    m_driver.DmInvalidateState();

    EXPECT_EQ(m_host.Take(),
              (Lines{"VqBaseDriver.AddTimer(1000, 1) = 1", "VqBaseDriver.FireEvent(5)",
                     "VqBaseDriver.LogMessage(3, it failed)", "VqBaseDriver.DmInvalidateState()"}));
}

TEST_F(BaseDriverTest, TimersOfADestroyedDriverFireNoMore) {
    {
        BareDriver another(m_host);
        another.AddTimer(10, Milliseconds);
        m_host.Take();
    }
    m_host.Advance(100);

    EXPECT_EQ(m_host.Take(), Lines{});
}

TEST_F(BaseDriverTest, TimersOfADriverWhoseConstructorThrowsFireNoMore) {
    EXPECT_THROW(FailingDriver{m_host}, std::runtime_error);
    m_host.Take();
    m_host.Advance(100);

    EXPECT_EQ(m_host.Take(), Lines{});
}

TEST(BaseDriverWithoutHostTest, CannotBeMadeAndSaysWhatIsMissing) {
    InstanceRegistry instances;
    try {
        const BareDriver driver(instances);
        FAIL() << "made without a driver host";
    } catch (const std::invalid_argument& error) {
        EXPECT_EQ(std::string(error.what()),
                  "a driver needs an IDriverHost, published at its instance manager under "
                  "{2B9E4C1D-70A5-4F0B-9C66-1F3B7A0D5E42}");
    }
}

} // namespace
