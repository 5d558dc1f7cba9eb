#include "tests/support/FakeDriverHost.h"

#include "framework/CmdMessage.h"

vq::auto_com<ICmdMessage> FakeHelper::CreateCmdMessage(const std::string& name) const {
    m_log.LookUp("IDriverHelper.CreateCmdMessage(" + name + ")");
    return CmdMessage::Create(name);
}

const IDriverHelperV2& FakeDriverHost::GetHelper(const VqBaseDriver& /*driver*/) {
    m_log.LookUp("VqBaseDriver.GetHelper()");
    return helper;
}

std::uint32_t FakeDriverHost::AddTimer(VqBaseDriver& driver, std::uint32_t interval, std::uint32_t unit) {
    return m_timers.AddDriverTimer(driver, interval, unit);
}

void FakeDriverHost::ForgetDriver(VqBaseDriver& driver) noexcept {
    m_timers.ForgetDriver(driver);
}

void FakeDriverHost::FireEvent(std::uint32_t eventId) {
    m_log.Call("VqBaseDriver.FireEvent(" + std::to_string(eventId) + ")");
}

void FakeDriverHost::LogMessage(unsigned level, const char* text) {
    m_log.Call("VqBaseDriver.LogMessage(" + std::to_string(level) + ", " + text + ")");
}

void FakeDriverHost::InvalidateState(VqBaseDriver& /*driver*/) {
    m_log.Call("VqBaseDriver.DmInvalidateState()");
}

void FakeDriverHost::HandlerRegistered(Registration registration, const std::string& name) {
    switch (registration) {
    case Registration::Cmd0:
        return m_log.Call("CmdDispatcher.RegisterCmd0(" + name + ")");
    case Registration::Cmd1:
        return m_log.Call("CmdDispatcher.RegisterCmd1(" + name + ")");
    case Registration::UICmd:
        return m_log.Call("UICmdDispatcher.RegisterUICmd(" + name + ")");
    }
}

void FakeDriverHost::HandlerMissing(const std::string& name) {
    m_log.Event("no handler: " + name);
}
