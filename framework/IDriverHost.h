#pragma once

#include "host/IDriverHelperV2.h"

#include <cstdint>
#include <string>

class VqBaseDriver;

/// What stands behind the base driver's own services. A program that loads drivers publishes one at its
/// instance manager before it creates the first driver, and keeps it until the last one is destroyed. All
/// calls come on the driver thread.
class IDriverHost {
public:
    static constexpr const char* kGuid = "{2B9E4C1D-70A5-4F0B-9C66-1F3B7A0D5E42}";

    /// Which dispatcher operation a name was registered with.
    enum class Registration { Cmd0, Cmd1, UICmd };

    /// The helper of this driver; lives as long as the driver.
    [[nodiscard]] virtual const IDriverHelperV2& GetHelper(const VqBaseDriver& driver) = 0;

    /// Arms a one-shot timer that calls the driver's `OnTimerExpired`; returns its id, never 0.
    virtual std::uint32_t AddTimer(VqBaseDriver& driver, std::uint32_t interval, std::uint32_t unit) = 0;

    /// The driver is being destroyed: its timers fire no more. Must not throw.
    virtual void ForgetDriver(VqBaseDriver& driver) noexcept = 0;

    virtual void FireEvent(std::uint32_t eventId) = 0;
    virtual void LogMessage(unsigned level, const char* text) = 0;
    virtual void InvalidateState(VqBaseDriver& driver) = 0;

    /// The driver has registered a handler under this name, or nobody has one for a command or request that
    /// came in.
    virtual void HandlerRegistered(Registration registration, const std::string& name) = 0;
    virtual void HandlerMissing(const std::string& name) = 0;

protected:
    ~IDriverHost() = default;
};
