#pragma once

#include "host/ICmdMessage.h"
#include "host/IDeviceManager.h"
#include "host/IDriverHelper.h"
#include "host/IInstanceManager.h"
#include "host/IRoomProxy.h"
#include "host/VqXML.h"

#include <cstdint>

/// One room that hears an announcement: the room's device id and the volume at which it plays there.
///
/// Its element is "room", with "id" and "volume". Each room operation is one call on the host's interface of
/// that room, looked up anew; a room that the host does not know is skipped without a word. Helper and
/// instance manager are borrowed for life.
class AnnouncementRoom {
public:
    /// From a "room" element. Whatever is missing reads as 0.
    AnnouncementRoom(const IDriverHelper& driverHelper,
                     const IInstanceManager& instances,
                     VqXML::INode& node);

    /// From a message whose parameter "room" is the text of such an element. Throws
    /// "Unable to create announcement room" (`const char*`) when that is no XML.
    AnnouncementRoom(const IDriverHelper& driverHelper,
                     const IInstanceManager& instances,
                     const ICmdMessage& message);

    AnnouncementRoom(const AnnouncementRoom&) = delete;
    AnnouncementRoom& operator=(const AnnouncementRoom&) = delete;
    virtual ~AnnouncementRoom() = default;

    /// Keeps the helper and looks the device manager up. Both constructors end with it.
    void Initialize(const IDriverHelper& driverHelper);

    [[nodiscard]] std::uint32_t GetRoomId() const { return m_roomId; }

    /// Takes id and volume from an element, whatever its name.
    void fromXml(VqXML::INode& node);

    /// A new "room" element.
    [[nodiscard]] vq::auto_com<VqXML::INode> toXml() const;

    /// Takes id and volume from the message's "room"; false, and nothing changed, when that is no XML.
    bool fromCmdMessage(const ICmdMessage& message);

    /// As `fromCmdMessage`: the id changes too. The owner's map key is the owner's business.
    bool ModifyRoom(const ICmdMessage& message);

    void SetUpAudio();
    /// Sets the room's volume; 0 and -1 both mean that it is left as it is.
    void SetAudioVolume();
    void RestoreAudioState();
    void SetUpVideo();
    void RestoreVideoState();
    void CancelRestoringState();

private:
    [[nodiscard]] IRoomProxy* FindProxy() const;
    void Call(void (IRoomProxy::*operation)());

    std::uint32_t m_roomId = 0;
    std::int32_t m_volume = 0;
    IDeviceManager* m_deviceManager = nullptr;
    const IDriverHelper* m_driverHelper = nullptr;
    const IInstanceManager& m_instances;
};
