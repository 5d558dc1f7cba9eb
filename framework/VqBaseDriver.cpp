#include "host/VqBaseDriver.h"

#include "framework/IDriverHost.h"
#include "host/FindService.h"

#include <stdexcept>

namespace {

IDriverHost& RequireHost(const IInstanceManager& instances) {
    auto* const host = FindService<IDriverHost>(instances);
    if (host == nullptr)
        throw std::invalid_argument(
            std::string("a driver needs an IDriverHost, published at its instance manager under ") +
            IDriverHost::kGuid);
    return *host;
}

} // namespace

VqBaseDriver::VqBaseDriver(IInstanceManager& instances, DriverMultiplicity multiplicity)
    : m_instances(instances)
    , m_host(RequireHost(instances))
    , m_multiplicity(multiplicity) {}

std::uint32_t VqBaseDriver::AddTimer(std::uint32_t interval, unsigned unit) {
    return m_host.AddTimer(*this, interval, unit);
}

void VqBaseDriver::FireEvent(std::uint32_t eventId) {
    m_host.FireEvent(eventId);
}

void VqBaseDriver::LogMessage(unsigned level, const char* text) const {
    m_host.LogMessage(level, text);
}

void VqBaseDriver::DmInvalidateState() {
    m_host.InvalidateState(*this);
}

IInstanceManager* VqBaseDriver::GetInstanceManager() const {
    return &m_instances;
}

const IDriverHelperV2& VqBaseDriver::GetHelper() const {
    return m_host.GetHelper(*this);
}

IDriverHost& VqBaseDriver::GetHost() const {
    return m_host;
}

// What a driver does not override.

std::uint32_t VqBaseDriver::AddRef() {
    return ++m_references;
}

std::uint32_t VqBaseDriver::Release() {
    return --m_references;
}

void VqBaseDriver::QueryInterface(const std::string& /*guid*/, void** out) {
    *out = nullptr;
}

void VqBaseDriver::BoundCall(std::uint32_t /*bindingId*/, const ICmdMessage& /*message*/) {}
void VqBaseDriver::OnBindingChanged(std::uint32_t /*bindingId*/, bool /*isBound*/) {}

VqBaseDriver::~VqBaseDriver() {
    m_host.ForgetDriver(*this);
}

std::uint32_t VqBaseDriver::GetRoomId() const {
    return 0;
}

std::uint32_t VqBaseDriver::GetDeviceId() const {
    return GetHelper().GetDeviceId();
}

std::string VqBaseDriver::GetDeviceName() const {
    return {};
}

std::string VqBaseDriver::GetDeviceType() const {
    return {};
}

std::string VqBaseDriver::GetDeviceRoomNameAddr() const {
    return {};
}

std::string VqBaseDriver::GetDeviceStateAddr() const {
    return {};
}

void VqBaseDriver::SetRoomName(const std::string& /*name*/) {}

bool VqBaseDriver::HaveBeenIdentified() const {
    return false;
}

void VqBaseDriver::LateInitialize() {}

DriverMultiplicity VqBaseDriver::GetMultiplicity() const {
    return m_multiplicity;
}

void VqBaseDriver::Initialize(std::uint32_t /*reason*/,
                              VqXML::INode& /*configuration*/,
                              VqXML::INode* /*savedState*/) {}
void VqBaseDriver::OnDriverAdded() {}
void VqBaseDriver::OnDestroy() {}
void VqBaseDriver::RemovedFromProject() {}
void VqBaseDriver::OnAVRoomOff(std::uint32_t /*roomId*/) {}

std::string VqBaseDriver::GetIdentifyStrings() const {
    return {};
}

std::string VqBaseDriver::GetModel() const {
    return {};
}

std::string VqBaseDriver::GetControlTag() const {
    return {};
}

std::string VqBaseDriver::GetStringNameDriver() const {
    return {};
}

std::string VqBaseDriver::GetStringNameProxy() const {
    return {};
}

void VqBaseDriver::OnDriverNameChanged(const std::string& /*name*/) {}

vq::auto_com<VqXML::INode> VqBaseDriver::GetCapabilities() {
    return {};
}

vq::auto_com<VqXML::INode> VqBaseDriver::GetPersistState(std::uint32_t /*reason*/) {
    return {};
}

vq::auto_com<VqXML::INode> VqBaseDriver::GetEvents() {
    return {};
}

void VqBaseDriver::ExecuteCommand(const ICmdMessage& /*message*/,
                                  ICmdReturn* /*result*/,
                                  std::uint32_t /*context*/) {}

vq::auto_com<VqXML::INode> VqBaseDriver::GetInitializeData() {
    return {};
}

bool VqBaseDriver::TestCondition(const ICmdMessage& /*condition*/) {
    return false;
}

vq::auto_com<VqXML::INode> VqBaseDriver::UIRequest(const ICmdMessage& /*message*/) {
    return {};
}

void VqBaseDriver::OnAVSelected(std::uint32_t /*roomId*/, std::uint32_t /*bindingId*/) {}
void VqBaseDriver::OnAVReSelected(std::uint32_t /*roomId*/, std::uint32_t /*bindingId*/) {}
void VqBaseDriver::OnAVDeselected(std::uint32_t /*roomId*/, std::uint32_t /*bindingId*/) {}
void VqBaseDriver::OnAVAddLocationInfo(std::uint32_t /*roomId*/, VqXML::INode& /*info*/) {}

bool VqBaseDriver::IsAVOutputToInputValid(std::uint32_t /*outputId*/, std::uint32_t /*inputId*/) const {
    return false;
}

bool VqBaseDriver::IsAVMultiSelect() const {
    return false;
}

bool VqBaseDriver::IsAVSourceAvailable(std::uint32_t /*sourceId*/) const {
    return false;
}

std::string VqBaseDriver::GetDriverType() const {
    return {};
}

vq::auto_com<VqXML::INode> VqBaseDriver::GetDeviceCommon() {
    return {};
}

std::string VqBaseDriver::GetDeviceIP() const {
    return {};
}

void VqBaseDriver::OnRoomNameChanged(std::uint32_t /*roomId*/, const std::string& /*name*/) {}

vq::auto_com<VqXML::INode> VqBaseDriver::GetDeviceBindingInfo() {
    return {};
}

std::string VqBaseDriver::GetEventLabel(std::uint32_t /*eventId*/) const {
    return {};
}

void VqBaseDriver::VmAdd(std::uint32_t /*variableId*/,
                         const std::string& /*name*/,
                         const std::string& /*value*/) {}
void VqBaseDriver::VmRemove(std::uint32_t /*variableId*/) {}
void VqBaseDriver::OnVariableChanged(std::uint32_t /*deviceId*/,
                                     std::uint32_t /*variableId*/,
                                     const std::string& /*value*/) {}
void VqBaseDriver::OnConnectionStatusChanged(std::uint32_t /*bindingId*/, bool /*isConnected*/) {}
void VqBaseDriver::OnDataIn(std::uint32_t /*bindingId*/,
                            int /*port*/,
                            const unsigned char* /*data*/,
                            unsigned /*size*/) {}
void VqBaseDriver::OnDataIn(std::uint32_t /*bindingId*/, int /*port*/, const IVqProtocolPacket& /*packet*/) {}
void VqBaseDriver::OnPoll(std::uint32_t /*bindingId*/) {}
void VqBaseDriver::OnNetworkBound(std::uint32_t /*bindingId*/, const std::string& /*address*/) {}
void VqBaseDriver::OnEventFired(std::uint32_t /*deviceId*/, std::uint32_t /*eventId*/) {}
void VqBaseDriver::OnTimerExpired(std::uint32_t /*timerId*/, std::int32_t /*context*/) {}
void VqBaseDriver::OnNetworkBindingChanged(std::uint32_t /*bindingId*/, bool /*isBound*/) {}
void VqBaseDriver::RegisterCommands() {}
void VqBaseDriver::RegisterConditionals() {}
void VqBaseDriver::RegisterVariables() {}
void VqBaseDriver::UnregisterVariables() {}
