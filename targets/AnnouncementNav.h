#pragma once

#include "host/ICmdMessage.h"
#include "host/IDeviceManager.h"
#include "host/IDriverHelper.h"
#include "host/IInstanceManager.h"
#include "host/VqXML.h"

#include <cstdint>
#include <string>

/// One navigator that shows an announcement's message as a popup.
///
/// Its element is "navigator", with "id", "room_id" and "onscreen"; the latter two are kept and written back,
/// no more. Popup commands go to the navigator's own id, never to its room's, and nobody waits for an answer.
/// Helper and instance manager are borrowed for life.
class AnnouncementNav {
public:
    /// From a "navigator" element. Whatever is missing reads as 0 and false.
    AnnouncementNav(const IDriverHelper& driverHelper, const IInstanceManager& instances, VqXML::INode& node);

    /// From a message whose parameter "navigator" is the text of such an element. Throws
    /// "Unable to dom to create an announcement navigator" (`const char*`) when that is no XML.
    AnnouncementNav(const IDriverHelper& driverHelper,
                    const IInstanceManager& instances,
                    const ICmdMessage& message);

    AnnouncementNav(const AnnouncementNav&) = delete;
    AnnouncementNav& operator=(const AnnouncementNav&) = delete;
    virtual ~AnnouncementNav() = default;

    /// Reads the element, keeps the helper and looks the device manager up. Both constructors end with it.
    void Initialize(const IDriverHelper& driverHelper, VqXML::INode& node);

    /// Takes the ids and the flag from an element, whatever its name.
    void fromXml(VqXML::INode& node);

    /// A new "navigator" element.
    [[nodiscard]] vq::auto_com<VqXML::INode> toXml() const;

    [[nodiscard]] std::uint32_t GetNavID() const { return m_navId; }
    [[nodiscard]] std::uint32_t GetRoomID() const { return m_roomId; }

    /// Sends "SHOW_POPUP". `delay` is how long the popup stays, in milliseconds. With both ids non-zero the
    /// message is bound to variable `variableId` of device `displayId`, and `text` is not sent.
    void DisplayVideo(const std::string& image,
                      const std::string& text,
                      std::uint32_t delay,
                      std::uint32_t displayId,
                      std::uint32_t variableId,
                      bool showOk);

    /// Sends "HIDE_POPUP".
    void DismissVideo();

private:
    void Send(ICmdMessage& message);

    std::uint32_t m_roomId = 0;
    std::uint32_t m_navId = 0;
    bool m_isOnscreen = false;
    const IDriverHelper* m_driverHelper = nullptr;
    const IInstanceManager& m_instances;
    IDeviceManager* m_deviceManager = nullptr;
};
