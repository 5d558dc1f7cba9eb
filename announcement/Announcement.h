#pragma once

#include "host/ICmdMessage.h"
#include "host/IDeviceManager.h"
#include "host/IDigitalAudio.h"
#include "host/IDriverHelperV2.h"
#include "host/IInstanceManager.h"
#include "host/ITimerManager.h"
#include "host/VqXML.h"
#include "targets/AnnouncementNav.h"
#include "targets/AnnouncementRoom.h"

#include <boost/shared_ptr.hpp>

#include <cstdint>
#include <map>
#include <string>

/// One stored announcement: a sound file played in rooms, a message shown on navigators, and the timed
/// sequence that plays them. Held by `boost::shared_ptr`; helper and instance manager are borrowed for life.
///
/// The record and its XML form stand in AnnouncementXml.cpp, its editing by requests in
/// AnnouncementEditing.cpp, its playing in AnnouncementPlayback.cpp.
class Announcement : public ITimerManagerCallback {
public:
    /// From an "announcement" element. Whatever is missing there stays as a new announcement has it.
    Announcement(const IDriverHelperV2& helper, const IInstanceManager& instances, VqXML::INode& node);

    /// From a message whose parameter "announcement" is the text of such an element. An id in that text is
    /// kept; without one (or with 0) the announcement takes `id`. When the text is no XML, asserts and throws
    /// "Unable to dom xml to create announcement" (`const char*`).
    Announcement(const IDriverHelperV2& helper,
                 const IInstanceManager& instances,
                 const ICmdMessage& message,
                 std::uint32_t id);

    Announcement(const Announcement&) = delete;
    Announcement& operator=(const Announcement&) = delete;

    void OnTimerExpired(std::uint32_t timerId, std::int32_t context) override;

    /// Cancels the announcement's timers.
    virtual ~Announcement();

    /// Clears the run-time state and looks device manager and timer manager up. Each constructor ends with
    /// it.
    void Initialize(const IInstanceManager& instances);

    /// The announcement's own id, which a request may have set to another than the key it is stored under.
    [[nodiscard]] std::uint32_t GetID() const { return m_id; }

    // The record as XML.

    /// Fills the record from an element, whatever its name. Values of a missing "audio" or "video" stay, but
    /// the variable binding and the OK button are always reset; rooms and navigators are added to those that
    /// are there, and of several with the same id the first stays.
    void fromXml(VqXML::INode& node);

    /// A new "announcement" element with every field.
    [[nodiscard]] vq::auto_com<VqXML::INode> toXml();

    /// `fromXml` on the message's "announcement"; -1, and nothing changed, when that is no XML, else 0.
    int fromCmdMessage(const ICmdMessage& message);

    // Editing. Which of these report a result, and which call `InvalidateState`, is as uneven as it looks on
    // purpose: hosts rely on it.

    /// Replaces the announcement by the message's "announcement"; rooms and navigators are then exactly the
    /// new ones. -1 when that is no XML: the former targets stay, and only then the state is invalidated.
    int ModifyAnnouncement(const ICmdMessage& message);

    /// Adds the message's "room", or rewrites the room with its id; -1 after a caught `std::string`, else 0.
    int AddRoom(const ICmdMessage& message);

    /// Rewrites the room that the message's "room" names; -1 when there is none, or after a caught
    /// `std::string`.
    int ModifyRoom(const ICmdMessage& message);

    /// Removes the room with the id in "room_id", if there is one.
    void RemoveRoom(const ICmdMessage& message);

    /// Adds the message's "navigator" unless there is one with its id.
    void AddNavigator(const ICmdMessage& message);

    /// Removes the navigator with the id in "navigator_id", if there is one.
    void RemoveNavigator(const ICmdMessage& message);

    // Playing.

    /// Starts playing; audio and video run side by side from here.
    void Execute();

    /// The stream is ready: sets the rooms up and waits for the audio delay.
    void AudioStreamCreated();

    /// The file has been played: waits for the rooms to settle, then restores them.
    void AudioAnnouncementComplete();

    [[nodiscard]] bool IsRoomInCurrentAnnouncement(std::uint32_t roomId) const;

    /// Whether none of the four timers runs.
    [[nodiscard]] bool IsComplete() const;

    /// Hides the popup if it is shown. One that still waits to be shown is shown nevertheless.
    void Dismiss();

private:
    using Rooms = std::map<std::uint32_t, boost::shared_ptr<AnnouncementRoom>>;
    using Navigators = std::map<std::uint32_t, boost::shared_ptr<AnnouncementNav>>;

    void ReadVideo(VqXML::INode& video);
    void ReadRooms(VqXML::INode& node);
    void ReadNavigators(VqXML::INode& node);
    void WriteVideo(VqXML::INode& video) const;

    void DisplayVideo();
    void SetAudioVolumes();
    void PlayAudioFile();
    void RestoreAudioState();
    void RestoreVideoState();

    void ArmTimer(std::uint32_t& timerId, std::uint32_t interval, TimerUnit unit);
    void CancelTimer(std::uint32_t& timerId);
    [[nodiscard]] IDigitalAudio* GetDigitalAudio() const;
    void LogInfo(const std::string& text) const;
    void LogError(const std::string& text) const;
    void InvalidateState();

    std::uint32_t m_id = 0;
    std::string m_name;
    std::string m_audioFile; ///< without folder and extension
    /// Milliseconds between the rooms' set-up and playing; 0 selects one second.
    std::uint32_t m_audioDelay = 0;
    std::string m_text;
    std::string m_videoFile;
    std::uint32_t m_videoDelay = 0; ///< milliseconds before the popup; 0 shows it at once
    std::uint32_t m_timeout = 0;    ///< milliseconds that the popup stays; 0 becomes 30000 when it is shown
    Rooms m_rooms;
    Navigators m_navigators;
    bool m_isAudioSetUp = false;
    std::uint32_t m_audioStageTimer = 0; ///< waits for the stream, the end of playing, or the rooms to settle
    std::uint32_t m_dismissTimer = 0;    ///< runs while the popup is shown
    std::uint32_t m_playTimer = 0;       ///< the audio delay
    std::uint32_t m_displayTimer = 0;    ///< the video delay
    std::uint32_t m_displayId = 0;       ///< device of the variable that the popup shows; 0 without binding
    std::uint32_t m_variableId = 0;
    std::string m_variableName;
    bool m_hasOkButton = true;
    IDeviceManager* m_deviceManager = nullptr;
    ITimerManager* m_timerManager = nullptr;
    const IDriverHelperV2& m_helper;
    const IInstanceManager& m_instances;
};
