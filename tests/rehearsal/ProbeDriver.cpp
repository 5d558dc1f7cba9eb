#include "tests/rehearsal/ProbeDriver.h"

#include "host/AssertWrite.h"
#include "host/FindService.h"
#include "host/IDeviceManager.h"
#include "host/ILogger.h"
#include "host/IRoomProxy.h"
#include "host/ITimerManager.h"

#include <stdexcept>

ProbeDriver::ProbeDriver(IInstanceManager& instances)
    : VqBaseAgentDriver(instances, DriverMultiplicity::Single) {
    instances.RegisterInterface(IAnnouncementAgent::kGuid, static_cast<IAnnouncementAgent*>(this), 1);
}

ProbeDriver::~ProbeDriver() {
    try {
        if (auto* const timers = FindService<ITimerManager>(*GetInstanceManager()); timers != nullptr)
            timers->KillAllTimers(this);
        GetInstanceManager()->UnregisterInterface(IAnnouncementAgent::kGuid);
    } catch (...) { // NOLINT(bugprone-empty-catch): a destructor has nobody to tell
    }
}

void ProbeDriver::Initialize(std::uint32_t reason, VqXML::INode& configuration, VqXML::INode* savedState) {
    VqBaseAgentDriver::Initialize(reason, configuration, savedState);
    LogMessage(reason, savedState == nullptr ? "no saved state" : savedState->GetName().c_str());
}

void ProbeDriver::RegisterCommands() {
    On("arm", &ProbeDriver::OnArm);                // ms, unit: a timer of the driver
    On("arm_managed", &ProbeDriver::OnArmManaged); // ms, unit: a timer of the timer manager
    On("again", &ProbeDriver::OnAgain);            // count: so many expiries arm a timer of 0 ms
    On("kill", &ProbeDriver::OnKill);              // id; tell: what has become of it
    On("kill_all", &ProbeDriver::OnKillAll);
    On("audio", &ProbeDriver::OnAudio);       // play: a path; release: anything; else a stream is created
    On("hold", &ProbeDriver::OnHold);         // digital audio is looked up once and for all
    On("room", &ProbeDriver::OnRoom);         // id: every operation of its interface
    On("find", &ProbeDriver::OnFind);         // guid, or device and guid
    On("send", &ProbeDriver::OnSend);         // name, text: with a bound parameter, too
    On("log", &ProbeDriver::OnLog);           // text
    On("own", &ProbeDriver::OnOwn);           // everything else that a driver asks for
    On("throw", &ProbeDriver::OnThrow);       // what, text
    On("withdraw", &ProbeDriver::OnWithdraw); // the face
    GetCmdDispatcher().RegisterCmd0("nothing", [] {});
    GetUICmdDispatcher().RegisterUICmd("echo", [](const ICmdMessage& message) {
        return VqXML::CreateXmlNode("echo", message.GetParam("text"));
    });
    GetUICmdDispatcher().RegisterUICmd("no_reply",
                                       [](const ICmdMessage&) { return vq::auto_com<VqXML::INode>(); });
}

vq::auto_com<VqXML::INode> ProbeDriver::GetPersistState(std::uint32_t reason) {
    return VqXML::CreateXmlNode("kept", std::to_string(reason) + " & \"more\"");
}

void ProbeDriver::OnTimerExpired(std::uint32_t /*timerId*/, std::int32_t /*context*/) {
    if (m_again == 0)
        return;
    --m_again;
    AddTimer(0, TimerUnit::Milliseconds);
}

void ProbeDriver::AudioAnnouncementComplete() {
    LogMessage(LogLevel::Information, "announcement complete");
}

void ProbeDriver::On(const char* name, Command command) {
    GetCmdDispatcher().RegisterCmd1(
        name, [this, command](const ICmdMessage& message) { (this->*command)(message); });
}

void ProbeDriver::OnArm(const ICmdMessage& message) {
    AddTimer(message.GetParamAsULong("ms"), message.GetParam("unit") == "2" ? 2 : 1);
}

void ProbeDriver::OnArmManaged(const ICmdMessage& message) {
    FindService<ITimerManager>(*GetInstanceManager())
        ->AddTimer(message.GetParamAsULong("ms"), message.GetParam("unit") == "2" ? 2 : 1, this);
}

void ProbeDriver::OnAgain(const ICmdMessage& message) {
    m_again = message.GetParamAsULong("count");
}

void ProbeDriver::OnKill(const ICmdMessage& message) {
    std::uint32_t id = message.GetParamAsULong("id");
    try {
        FindService<ITimerManager>(*GetInstanceManager())->KillTimer(id);
    } catch (...) {
        if (!message.GetParam("tell").empty())
            LogMessage(LogLevel::Error, ("the id is still " + std::to_string(id)).c_str());
        throw;
    }
    if (id != 0)
        LogMessage(LogLevel::Error, "the id has not become 0");
}

void ProbeDriver::OnKillAll(const ICmdMessage& /*message*/) {
    FindService<ITimerManager>(*GetInstanceManager())->KillAllTimers(this);
}

void ProbeDriver::OnAudio(const ICmdMessage& message) {
    IDigitalAudio* const audio =
        m_heldAudio != nullptr ? m_heldAudio : FindService<IDigitalAudio>(*GetInstanceManager());
    if (audio == nullptr)
        return LogMessage(LogLevel::Error, "no digital audio");
    if (const std::string path = message.GetParam("play"); !path.empty())
        return audio->PlayFile(path);
    if (!message.GetParam("release").empty())
        return audio->ReleaseStream();
    audio->CreateStream();
}

void ProbeDriver::OnHold(const ICmdMessage& /*message*/) {
    m_heldAudio = FindService<IDigitalAudio>(*GetInstanceManager());
}

void ProbeDriver::OnRoom(const ICmdMessage& message) {
    void* found = nullptr;
    FindService<IDeviceManager>(*GetInstanceManager())
        ->GetDeviceInterface(message.GetParamAsULong("id"), IRoomProxy::kGuid, &found);
    if (found == nullptr)
        return LogMessage(LogLevel::Error, "no room");
    auto& room = *static_cast<IRoomProxy*>(found);
    room.SetUpAudio();
    room.SetAudioVolume(0xFFFFFFFF);
    room.RestoreAudioState();
    room.SetUpVideo();
    room.RestoreVideoState();
    room.CancelRestoringState();
}

void ProbeDriver::OnFind(const ICmdMessage& message) {
    void* found = nullptr;
    if (const std::string device = message.GetParam("device"); !device.empty())
        FindService<IDeviceManager>(*GetInstanceManager())
            ->GetDeviceInterface(message.GetParamAsULong("device"), message.GetParam("guid"), &found);
    else
        GetInstanceManager()->QueryInterface(message.GetParam("guid"), &found);
}

void ProbeDriver::OnSend(const ICmdMessage& message) {
    const auto popup = GetHelper().CreateCmdMessage(message.GetParam("name"));
    popup->AddVariableParam("MESSAGE", "STRING", 9, 4);
    popup->AddParam("IMGURL", "STRING", message.GetParam("text"));
    FindService<IDeviceManager>(*GetInstanceManager())->SendCommandToDevice(5, popup.Get(), 0, 0);
}

void ProbeDriver::OnLog(const ICmdMessage& message) {
    auto* const logger = FindService<ILogger>(*GetInstanceManager());
    if (logger == nullptr)
        return LogMessage(LogLevel::Error, "no logger");
    logger->Log(LogLevel::Information, message.GetParam("text"));
}

void ProbeDriver::OnOwn(const ICmdMessage& /*message*/) {
    FireEvent(4294967295);
    DmInvalidateState();
    FindService<IDeviceManager>(*GetInstanceManager())->InvalidateDeviceState(GetHelper().GetDeviceId());
    vq::AssertWrite("Probe", 17, vq::StackTrace());
}

void ProbeDriver::OnThrow(const ICmdMessage& message) {
    static const std::string kText = "a text"; // outlives the exception
    const std::string what = message.GetParam("what");
    if (what == "const char*")
        throw kText.c_str(); // NOLINT(misc-throw-by-value-catch-by-reference): what drivers throw
    if (what == "std::string")
        throw std::string("another text");
    throw std::runtime_error("unseen");
}

void ProbeDriver::OnWithdraw(const ICmdMessage& /*message*/) {
    GetInstanceManager()->UnregisterInterface(IAnnouncementAgent::kGuid);
}
