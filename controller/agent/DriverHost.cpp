#include "controller/agent/DriverHost.h"

#include "framework/CmdMessage.h"

namespace controller {

namespace {

/// The agent knows two levels, 3 and 6; its errors speak of what was asked of it and not of this program.
Severity SeverityOf(unsigned level) noexcept {
    return level <= 3 ? Severity::Warning : Severity::Information;
}

} // namespace

const IDriverHelperV2& DriverHost::GetHelper(const VqBaseDriver& /*driver*/) {
    return *this;
}

std::uint32_t DriverHost::AddTimer(VqBaseDriver& driver, std::uint32_t interval, std::uint32_t unit) {
    return m_timers.AddDriverTimer(interval, unit, driver);
}

void DriverHost::ForgetDriver(VqBaseDriver& driver) noexcept {
    m_timers.ForgetDriver(driver);
}

void DriverHost::FireEvent(std::uint32_t eventId) {
    if (m_listeners.eventFired)
        m_listeners.eventFired(eventId);
}

void DriverHost::LogMessage(unsigned level, const char* text) {
    m_log.Write(SeverityOf(level), std::string("agent: ") + (text != nullptr ? text : ""));
}

void DriverHost::InvalidateState(VqBaseDriver& /*driver*/) {
    if (m_listeners.stateInvalidated)
        m_listeners.stateInvalidated();
}

void DriverHost::HandlerRegistered(Registration /*registration*/, const std::string& name) {
    m_log.Write(Severity::Debug, "agent: takes " + name);
}

void DriverHost::HandlerMissing(const std::string& name) {
    if (m_listeners.handlerMissing)
        m_listeners.handlerMissing(name);
}

void DriverHost::Log(int level, const std::string& text) {
    LogMessage(level < 0 ? 0 : static_cast<unsigned>(level), text.c_str());
}

vq::auto_com<ICmdMessage> DriverHost::CreateCmdMessage(const std::string& name) const {
    return CmdMessage::Create(name);
}

void DriverHost::Write(const char* file, int line, const vq::StackTrace& stack) {
    m_log.Warning(std::string("agent: a check failed in ") + file + ", line " + std::to_string(line));
    if (!m_log.Shows(Severity::Debug) || m_isNamingStack.exchange(true))
        return;
    m_worker.Submit([this, stack] {
        m_log.Write(Severity::Debug, stack.Text());
        m_isNamingStack = false;
    });
}

} // namespace controller
