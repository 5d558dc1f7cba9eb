#include "tests/support/FakeHost.h"

FakeHost::FakeHost()
    : timers(log)
    , driverHost(log, timers)
    , devices(log)
    , logger(log)
    , audio(log, timers, [this] { return m_face; }) {}

void FakeHost::QueryInterface(const std::string& guid, void** out) const {
    if (const void* const found = Find(guid))
        *out = const_cast<void*>(found); // else `out` is the caller's to have set to null
    if (guid != IDriverHost::kGuid)      // the framework's own look-up
        log.LookUp("IInstanceManager.QueryInterface(" + guid + ")");
}

void FakeHost::RegisterInterface(const std::string& guid, void* object, std::uint32_t version) {
    log.Call("IInstanceManager.RegisterInterface(" + guid + ", " + std::to_string(version) + ")");
    if (guid == IAnnouncementAgent::kGuid)
        m_face = static_cast<IAnnouncementAgent*>(object);
}

void FakeHost::UnregisterInterface(const std::string& guid) {
    if (guid == IAnnouncementAgent::kGuid)
        m_face = nullptr;
    log.Call("IInstanceManager.UnregisterInterface(" + guid + ")");
}

void FakeHost::Write(const char* file, int line, const vq::StackTrace& stack) {
    const char* const frames = stack.FrameCount() > 0 ? ")" : ", no stack)";
    log.Call(std::string("vq.AssertWrite(") + file + ", " + std::to_string(line) + frames);
}

const void* FakeHost::Find(const std::string& guid) const {
    // Converted to exactly the interface that the identifier names.
    if (guid == IDriverHost::kGuid)
        return static_cast<const IDriverHost*>(&driverHost);
    if (guid == IDeviceManager::kGuid && hasDeviceManager)
        return static_cast<const IDeviceManager*>(&devices);
    if (guid == ITimerManager::kGuid && hasTimerManager)
        return static_cast<const ITimerManager*>(&timers);
    if (guid == IDigitalAudio::kGuid && hasDigitalAudio)
        return static_cast<const IDigitalAudio*>(&audio);
    if (guid == ILogger::kGuid && hasLogger)
        return static_cast<const ILogger*>(&logger);
    return nullptr;
}
