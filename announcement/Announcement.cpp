#include "announcement/Announcement.h"

#include "host/AssertWrite.h"
#include "host/FindService.h"
#include "host/ILogger.h"
#include "host/LogLevel.h"

namespace {

/// Reported with the check of the message's text: a number of its own that stays, so that the host's reports
/// can be told apart.
constexpr int kNoDocumentLine = 37;

void Log(const IInstanceManager& instances, LogLevel level, const std::string& text) {
    if (auto* const logger = FindService<ILogger>(instances); logger != nullptr)
        logger->Log(static_cast<int>(level), text);
}

} // namespace

Announcement::Announcement(const IDriverHelperV2& helper,
                           const IInstanceManager& instances,
                           VqXML::INode& node)
    : m_helper(helper)
    , m_instances(instances) {
    fromXml(node);
    Initialize(instances);
}

Announcement::Announcement(const IDriverHelperV2& helper,
                           const IInstanceManager& instances,
                           const ICmdMessage& message,
                           std::uint32_t id)
    : m_helper(helper)
    , m_instances(instances) {
    const vq::auto_com<VqXML::IDocument> document =
        VqXML::CreateXmlDocument(message.GetParam("announcement"));
    if (!document) {
        vq::AssertWrite("Announcement", kNoDocumentLine, vq::StackTrace());
        throw "Unable to dom xml to create announcement";
    }
    fromXml(*document->GetRootNode());
    if (m_id == 0)
        m_id = id;
    Initialize(instances);
}

Announcement::~Announcement() {
    if (m_timerManager == nullptr)
        return;
    try {
        m_timerManager->KillAllTimers(this);
    } catch (...) { // NOLINT(bugprone-empty-catch): a destructor has nobody to tell
    }
}

void Announcement::Initialize(const IInstanceManager& instances) {
    m_isAudioSetUp = false;
    m_audioStageTimer = 0;
    m_dismissTimer = 0;
    m_playTimer = 0;
    m_displayTimer = 0;
    m_deviceManager = FindService<IDeviceManager>(instances);
    m_timerManager = FindService<ITimerManager>(instances);
}

IDigitalAudio* Announcement::GetDigitalAudio() const {
    return FindService<IDigitalAudio>(m_instances);
}

void Announcement::LogInfo(const std::string& text) const {
    Log(m_instances, Information, text);
}

void Announcement::LogError(const std::string& text) const {
    Log(m_instances, Error, text);
}

void Announcement::InvalidateState() {
    if (m_deviceManager != nullptr)
        m_deviceManager->InvalidateDeviceState(m_helper.GetDeviceId());
}
