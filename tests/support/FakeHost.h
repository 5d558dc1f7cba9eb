#pragma once

#include "framework/AssertWriter.h"
#include "host/IAnnouncementAgent.h"
#include "host/IInstanceManager.h"
#include "tests/support/CallLog.h"
#include "tests/support/FakeDevices.h"
#include "tests/support/FakeDriverHost.h"
#include "tests/support/FakeServices.h"
#include "tests/support/FakeTimers.h"

#include <cstdint>
#include <string>
#include <vector>

/// A whole host of fakes. Each service can be taken away from look-ups, time passes when the test says so,
/// and every call that comes in stands in `log`.
class FakeHost final : public IInstanceManager, private AssertWriter {
public:
    FakeHost();

    void QueryInterface(const std::string& guid, void** out) const override;
    void RegisterInterface(const std::string& guid, void* object, std::uint32_t version) override;
    void UnregisterInterface(const std::string& guid) override;

    [[nodiscard]] const IDriverHelperV2& Helper() const { return driverHost.helper; }
    /// The face that is published now, or null.
    [[nodiscard]] IAnnouncementAgent* Face() const { return m_face; }
    void Advance(std::uint64_t milliseconds) { timers.Advance(milliseconds); }
    std::vector<std::string> Take() { return log.Take(); }

    mutable CallLog log;
    FakeTimers timers;
    FakeDriverHost driverHost;
    FakeDevices devices;
    FakeLogger logger;
    FakeAudio audio;

    bool hasDeviceManager = true;
    bool hasTimerManager = true;
    bool hasDigitalAudio = true;
    bool hasLogger = true;

private:
    void Write(const char* file, int line, const vq::StackTrace& stack) override;
    [[nodiscard]] const void* Find(const std::string& guid) const;

    IAnnouncementAgent* m_face = nullptr;
};
