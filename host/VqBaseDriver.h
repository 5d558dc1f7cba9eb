#pragma once

#include "host/DriverMultiplicity.h"
#include "host/Export.h"
#include "host/ICmdMessage.h"
#include "host/ICmdReturn.h"
#include "host/IDriverHelperV2.h"
#include "host/IInstanceManager.h"
#include "host/IVqProtocolPacket.h"
#include "host/LogLevel.h"
#include "host/TimerUnit.h"
#include "host/VqXML.h"

#include <cstdint>
#include <string>

class IDriverHost;

/// Base class of every driver, and the face through which the host drives it.
///
/// The host creates a driver through its module's factory, owns it, and destroys it through the virtual
/// destructor. It makes every call on its driver thread, one at a time. Whatever a driver does not override
/// does nothing and answers with nothing (0, false, an empty text or holder), except where a comment says
/// otherwise. What a driver throws reaches the host.
class VQ_EXPORT VqBaseDriver {
public:
    VqBaseDriver(const VqBaseDriver&) = delete;
    VqBaseDriver& operator=(const VqBaseDriver&) = delete;

    // The order of the virtual operations is the order of their slots, which hosts rely on.

    /// References that the host's own objects take; counted, but the driver's life is its owner's business.
    virtual std::uint32_t AddRef();
    virtual std::uint32_t Release();
    /// Stores in `out` the interface that the driver itself offers under this GUID, or null.
    virtual void QueryInterface(const std::string& guid, void** out);
    virtual void BoundCall(std::uint32_t bindingId, const ICmdMessage& message);
    virtual void OnBindingChanged(std::uint32_t bindingId, bool isBound);
    /// Drops the driver's timers: none of them fires any more.
    virtual ~VqBaseDriver();
    [[nodiscard]] virtual std::uint32_t GetRoomId() const;
    /// The id of the driver's own device, as the helper has it.
    [[nodiscard]] virtual std::uint32_t GetDeviceId() const;
    [[nodiscard]] virtual std::string GetDeviceName() const;
    [[nodiscard]] virtual std::string GetDeviceType() const;
    [[nodiscard]] virtual std::string GetDeviceRoomNameAddr() const;
    [[nodiscard]] virtual std::string GetDeviceStateAddr() const;
    virtual void SetRoomName(const std::string& name);
    [[nodiscard]] virtual bool HaveBeenIdentified() const;
    virtual void LateInitialize();
    /// The multiplicity given at construction.
    [[nodiscard]] virtual DriverMultiplicity GetMultiplicity() const;
    /// Prepares the driver. `reason` is the host's; `configuration` and `savedState` are borrowed for the
    /// call, and `savedState` is null when there is no saved state.
    virtual void Initialize(std::uint32_t reason, VqXML::INode& configuration, VqXML::INode* savedState);
    virtual void OnDriverAdded();
    virtual void OnDestroy();
    virtual void RemovedFromProject();
    virtual void OnAVRoomOff(std::uint32_t roomId);
    [[nodiscard]] virtual std::string GetIdentifyStrings() const;
    [[nodiscard]] virtual std::string GetModel() const;
    [[nodiscard]] virtual std::string GetControlTag() const;
    [[nodiscard]] virtual std::string GetStringNameDriver() const;
    [[nodiscard]] virtual std::string GetStringNameProxy() const;
    virtual void OnDriverNameChanged(const std::string& name);
    [[nodiscard]] virtual vq::auto_com<VqXML::INode> GetCapabilities();
    /// The state to save, as a newly built element; `reason` is the host's.
    [[nodiscard]] virtual vq::auto_com<VqXML::INode> GetPersistState(std::uint32_t reason);
    [[nodiscard]] virtual vq::auto_com<VqXML::INode> GetEvents();
    /// Delivers a command; `result` may be null.
    virtual void ExecuteCommand(const ICmdMessage& message, ICmdReturn* result, std::uint32_t context);
    [[nodiscard]] virtual vq::auto_com<VqXML::INode> GetInitializeData();
    [[nodiscard]] virtual bool TestCondition(const ICmdMessage& condition);
    /// Delivers a request and gives its reply.
    [[nodiscard]] virtual vq::auto_com<VqXML::INode> UIRequest(const ICmdMessage& message);
    virtual void OnAVSelected(std::uint32_t roomId, std::uint32_t bindingId);
    virtual void OnAVReSelected(std::uint32_t roomId, std::uint32_t bindingId);
    virtual void OnAVDeselected(std::uint32_t roomId, std::uint32_t bindingId);
    virtual void OnAVAddLocationInfo(std::uint32_t roomId, VqXML::INode& info);
    [[nodiscard]] virtual bool IsAVOutputToInputValid(std::uint32_t outputId, std::uint32_t inputId) const;
    [[nodiscard]] virtual bool IsAVMultiSelect() const;
    [[nodiscard]] virtual bool IsAVSourceAvailable(std::uint32_t sourceId) const;
    [[nodiscard]] virtual std::string GetDriverType() const;
    [[nodiscard]] virtual vq::auto_com<VqXML::INode> GetDeviceCommon();
    [[nodiscard]] virtual std::string GetDeviceIP() const;
    virtual void OnRoomNameChanged(std::uint32_t roomId, const std::string& name);
    [[nodiscard]] virtual vq::auto_com<VqXML::INode> GetDeviceBindingInfo();
    [[nodiscard]] virtual std::string GetEventLabel(std::uint32_t eventId) const;
    virtual void VmAdd(std::uint32_t variableId, const std::string& name, const std::string& value);
    virtual void VmRemove(std::uint32_t variableId);
    virtual void
    OnVariableChanged(std::uint32_t deviceId, std::uint32_t variableId, const std::string& value);
    virtual void OnConnectionStatusChanged(std::uint32_t bindingId, bool isConnected);
    virtual void OnDataIn(std::uint32_t bindingId, int port, const unsigned char* data, unsigned size);
    virtual void OnDataIn(std::uint32_t bindingId, int port, const IVqProtocolPacket& packet);
    virtual void OnPoll(std::uint32_t bindingId);
    virtual void OnNetworkBound(std::uint32_t bindingId, const std::string& address);
    virtual void OnEventFired(std::uint32_t deviceId, std::uint32_t eventId);
    /// A timer armed with `AddTimer` has expired. The second argument is the host's.
    virtual void OnTimerExpired(std::uint32_t timerId, std::int32_t context);
    virtual void OnNetworkBindingChanged(std::uint32_t bindingId, bool isBound);
    virtual void RegisterCommands();
    virtual void RegisterConditionals();
    virtual void RegisterVariables();
    virtual void UnregisterVariables();

protected:
    /// `instances` is borrowed for the driver's life and must hold an `IDriverHost`
    /// (framework/IDriverHost.h); throws `std::invalid_argument` otherwise.
    VqBaseDriver(IInstanceManager& instances, DriverMultiplicity multiplicity);

    // The services that a driver calls on itself.

    /// Arms a one-shot timer of this driver and returns its id, never 0; `unit` is a `TimerUnit`. On expiry
    /// the host calls `OnTimerExpired`.
    std::uint32_t AddTimer(std::uint32_t interval, unsigned unit);

    /// Raises the driver's event with that number.
    void FireEvent(std::uint32_t eventId);

    /// Writes one line to the driver log; `level` is a `LogLevel`.
    void LogMessage(unsigned level, const char* text) const;

    /// Tells the host that the saved state has changed: it asks `GetPersistState` again and saves.
    void DmInvalidateState();

    /// The instance manager given at construction.
    [[nodiscard]] IInstanceManager* GetInstanceManager() const;

    /// The helper, to be handed on to the driver's objects; lives as long as the driver.
    [[nodiscard]] const IDriverHelperV2& GetHelper() const;

    /// What stands behind the services above.
    [[nodiscard]] IDriverHost& GetHost() const;

private:
    IInstanceManager& m_instances;
    IDriverHost& m_host;
    DriverMultiplicity m_multiplicity;
    std::uint32_t m_references = 1;
};

/// What a module's exported `GetCreationFunc` returns: creates a driver, which the caller then owns.
using DriverFactory = VqBaseDriver* (*)(IInstanceManager&);
