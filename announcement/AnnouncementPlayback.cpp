#include "announcement/Announcement.h"

namespace {

constexpr std::uint32_t kStreamWatchdogSeconds = 3;
constexpr std::uint32_t kPlayWatchdogSeconds = 20;
constexpr std::uint32_t kSettlingSeconds = 2;
constexpr std::uint32_t kDefaultAudioDelaySeconds = 1;
constexpr std::uint32_t kDefaultTimeoutMilliseconds = 30000;

} // namespace

void Announcement::Execute() {
    LogInfo("Executing announcement ");
    LogInfo(m_name);
    if (!m_audioFile.empty() && !m_rooms.empty()) {
        if (IDigitalAudio* const audio = GetDigitalAudio(); audio != nullptr) {
            audio->CreateStream();
            ArmTimer(m_audioStageTimer, kStreamWatchdogSeconds, Seconds);
        }
    }
    // The variable's name alone is enough here, though the popup goes by the two ids.
    const bool hasVideo = !m_videoFile.empty() || !m_text.empty() || !m_variableName.empty();
    if (!hasVideo || m_navigators.empty())
        return;
    LogInfo("Announcement setting up video");
    for (const auto& [id, room] : m_rooms)
        room->SetUpVideo();
    if (m_videoDelay != 0)
        ArmTimer(m_displayTimer, m_videoDelay, Milliseconds);
    else
        DisplayVideo();
}

void Announcement::AudioStreamCreated() {
    CancelTimer(m_audioStageTimer);
    for (const auto& [id, room] : m_rooms)
        room->SetUpAudio();
    m_isAudioSetUp = true;
    if (m_audioDelay != 0)
        ArmTimer(m_playTimer, m_audioDelay, Milliseconds);
    else
        ArmTimer(m_playTimer, kDefaultAudioDelaySeconds, Seconds);
}

void Announcement::OnTimerExpired(std::uint32_t timerId, std::int32_t /*context*/) {
    if (timerId == m_audioStageTimer) {
        m_audioStageTimer = 0;
        RestoreAudioState();
    } else if (timerId == m_playTimer) {
        m_playTimer = 0;
        SetAudioVolumes();
        PlayAudioFile();
    } else if (timerId == m_dismissTimer) {
        m_dismissTimer = 0;
        RestoreVideoState();
    } else if (timerId == m_displayTimer) {
        m_displayTimer = 0;
        DisplayVideo();
    }
}

void Announcement::SetAudioVolumes() {
    for (const auto& [id, room] : m_rooms)
        room->SetAudioVolume();
}

void Announcement::PlayAudioFile() {
    LogInfo("Announcement playing audio");
    IDigitalAudio* const audio = GetDigitalAudio();
    if (audio == nullptr) {
        RestoreAudioState();
        return;
    }
    audio->PlayFile("/media/announcements/" + m_audioFile + ".wav");
    ArmTimer(m_audioStageTimer, kPlayWatchdogSeconds, Seconds);
}

void Announcement::AudioAnnouncementComplete() {
    LogInfo("Announcement audio complete - Delaying to ensure that the client has finished.");
    CancelTimer(m_audioStageTimer);
    ArmTimer(m_audioStageTimer, kSettlingSeconds, Seconds);
}

void Announcement::RestoreAudioState() {
    LogInfo("Announcement restoring audio");
    if (!m_isAudioSetUp)
        return;
    m_isAudioSetUp = false;
    for (const auto& [id, room] : m_rooms)
        room->RestoreAudioState();
    if (IDigitalAudio* const audio = GetDigitalAudio(); audio != nullptr)
        audio->ReleaseStream();
}

void Announcement::DisplayVideo() {
    LogInfo("Announcement displaying video");
    for (const auto& [id, navigator] : m_navigators)
        navigator->DisplayVideo(m_videoFile, m_text, m_timeout, m_displayId, m_variableId, m_hasOkButton);
    // Only now: the first popups of an announcement without timeout are sent 0.
    if (m_timeout == 0)
        m_timeout = kDefaultTimeoutMilliseconds;
    ArmTimer(m_dismissTimer, m_timeout, Milliseconds);
}

void Announcement::RestoreVideoState() {
    LogInfo("Announcement restoring video");
    for (const auto& [id, room] : m_rooms)
        room->RestoreVideoState();
}

void Announcement::Dismiss() {
    if (m_dismissTimer == 0)
        return;
    CancelTimer(m_dismissTimer);
    m_dismissTimer = 0;
    for (const auto& [id, navigator] : m_navigators)
        navigator->DismissVideo();
    RestoreVideoState();
}

bool Announcement::IsRoomInCurrentAnnouncement(std::uint32_t roomId) const {
    return m_rooms.count(roomId) > 0;
}

bool Announcement::IsComplete() const {
    return m_audioStageTimer == 0 && m_dismissTimer == 0 && m_playTimer == 0 && m_displayTimer == 0;
}

void Announcement::ArmTimer(std::uint32_t& timerId, std::uint32_t interval, TimerUnit unit) {
    if (m_timerManager != nullptr)
        timerId = m_timerManager->AddTimer(interval, unit, this);
}

void Announcement::CancelTimer(std::uint32_t& timerId) {
    if (m_timerManager != nullptr)
        m_timerManager->KillTimer(timerId);
}
