#pragma once

#include "announce/basics/Json.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

/// What has a name in the house, fetched when it is first asked for. Finding throws Failure: NotFound with
/// the nearest names, Ambiguous with the candidates.
class House {
public:
    /// Gives what the API has at a path.
    using Fetch = std::function<Json(const std::string& path)>;

    explicit House(Fetch fetch) : m_fetch(std::move(fetch)) {}

    [[nodiscard]] const Json& Announcements() { return Known("announcements"); }
    [[nodiscard]] const Json& Rooms() { return Known("rooms"); }
    [[nodiscard]] const Json& Screens() { return Known("navigators"); }
    [[nodiscard]] const Json& Variables() { return Known("variables"); }
    [[nodiscard]] const Json& Media() { return Known("media"); }
    [[nodiscard]] const Json& Voices() { return Known("voices"); }

    /// They have changed: they are fetched again when they are asked for.
    void ForgetAnnouncements() { m_known.erase("announcements"); }

    /// By name or id; of a variable the id is DEVICE/VARIABLE.
    [[nodiscard]] const Json& FindAnnouncement(const std::string& text);
    [[nodiscard]] const Json& FindRoom(const std::string& text);
    [[nodiscard]] const Json& FindScreen(const std::string& text);
    [[nodiscard]] const Json& FindVariable(const std::string& text);
    /// The name of a file of the media folder, which is given whole or, of a sound, without ".wav".
    [[nodiscard]] std::string FindMedia(const std::string& text, const std::string& kind);

    /// Every type of event that the controller tells of.
    [[nodiscard]] std::vector<std::string> EventTypes();

    /// Names for people; "room 7" for one that the house does not have.
    [[nodiscard]] std::string RoomName(std::uint64_t id);
    [[nodiscard]] std::string ScreenName(std::uint64_t id);
    [[nodiscard]] std::string AnnouncementName(std::uint64_t id);

private:
    const Json& Known(const std::string& what);

    Fetch m_fetch;
    std::map<std::string, Json> m_known;
};

/// "chime.wav": a sound for people, whether the controller names it by its name, its file or its path.
[[nodiscard]] std::string SoundName(const std::string& file);

/// "5", or "DEVICE/VARIABLE" of a variable: by which it is named when its name does not do.
[[nodiscard]] std::string IdOf(const Json& item);
