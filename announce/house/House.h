#pragma once

#include "announce/Json.h"
#include "announce/client/ApiClient.h"
#include "announce/house/Names.h"

#include <cstdint>
#include <optional>
#include <string>

/// What has a name in the house, fetched when it is first asked for. Finding throws Failure as names::Find
/// does.
class House {
public:
    explicit House(ApiClient& client) : m_client(client) {}

    [[nodiscard]] const Json& Announcements();
    [[nodiscard]] const Json& Rooms();
    [[nodiscard]] const Json& Screens();
    [[nodiscard]] const Json& Variables();
    [[nodiscard]] const Json& Media();

    /// They have changed: they are fetched again when they are asked for.
    void ForgetAnnouncements() { m_announcements.reset(); }

    [[nodiscard]] const Json& FindAnnouncement(const std::string& text);
    [[nodiscard]] const Json& FindRoom(const std::string& text);
    [[nodiscard]] const Json& FindScreen(const std::string& text);
    /// By name, or by DEVICE/VARIABLE.
    [[nodiscard]] const Json& FindVariable(const std::string& text);
    /// The name of a file of the media folder, which is given whole or, of a sound, without ".wav".
    [[nodiscard]] std::string FindMedia(const std::string& text, const std::string& kind);

    /// Names for people; "room 7" for one that the house does not have.
    [[nodiscard]] std::string RoomName(std::uint64_t id);
    [[nodiscard]] std::string ScreenName(std::uint64_t id);
    [[nodiscard]] std::string AnnouncementName(std::uint64_t id);

private:
    const Json& Fetch(std::optional<Json>& place, const char* path, const char* member);

    ApiClient& m_client;
    std::optional<Json> m_announcements;
    std::optional<Json> m_rooms;
    std::optional<Json> m_screens;
    std::optional<Json> m_variables;
    std::optional<Json> m_media;
};

/// "chime.wav": a sound for people, whether the controller names it by its name, its file or its path.
[[nodiscard]] std::string SoundName(const std::string& file);

/// "DEVICE/VARIABLE", by which a variable is named when its name does not do.
[[nodiscard]] std::string VariableId(const Json& variable);
