#include "rehearsal/VirtualDriverHost.h"

#include "framework/CmdMessage.h"

vq::auto_com<ICmdMessage> VirtualDriverHost::Helper::CreateCmdMessage(const std::string& name) const {
    return CmdMessage::Create(name);
}

std::uint32_t VirtualDriverHost::AddTimer(VqBaseDriver& driver, std::uint32_t interval, std::uint32_t unit) {
    return m_timers.AddDriverTimer(driver, interval, unit);
}

void VirtualDriverHost::ForgetDriver(VqBaseDriver& driver) noexcept {
    m_timers.ForgetDriver(driver);
}

void VirtualDriverHost::FireEvent(std::uint32_t eventId) {
    m_trace.Call("VqBaseDriver.FireEvent", eventId);
}

void VirtualDriverHost::LogMessage(unsigned level, const char* text) {
    m_trace.Call("VqBaseDriver.LogMessage", level, text == nullptr ? "" : text);
}

void VirtualDriverHost::InvalidateState(VqBaseDriver& /*driver*/) {
    m_trace.Call("VqBaseDriver.DmInvalidateState");
}

void VirtualDriverHost::HandlerRegistered(Registration registration, const std::string& name) {
    switch (registration) {
    case Registration::Cmd0:
        return m_trace.Call("CmdDispatcher.RegisterCmd0", name);
    case Registration::Cmd1:
        return m_trace.Call("CmdDispatcher.RegisterCmd1", name);
    case Registration::UICmd:
        return m_trace.Call("UICmdDispatcher.RegisterUICmd", name);
    }
}

void VirtualDriverHost::HandlerMissing(const std::string& name) {
    m_trace.Tell(&TraceSink::HandlerMissing, name);
}
