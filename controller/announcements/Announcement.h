#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace controller {

/// What the house adds to an announcement and the agent does not know. It is stored beside the agent's part,
/// exported and imported with it, and stays when the agent's part is edited by the raw requests.
struct HouseAddition {
    std::vector<std::string> tags; ///< words that people find the announcement by, each once
    bool isPassing = false;        ///< there for one play; left over, it is gone at the next start
    bool isUrgent = false;         ///< loudspeakers interrupt what they play, where they can
};

/// One announcement: a sound in some rooms, and a message on some navigators. Times are milliseconds.
struct Announcement {
    struct Audio {
        std::string file; ///< a sound of the media folder without folder and ending; empty: none
        std::uint32_t delayMs = 0;
    };
    /// The variable that the message follows.
    struct Binding {
        std::uint32_t device = 0;
        std::uint32_t variable = 0;
        std::string name;
    };
    struct Video {
        std::string image;
        std::string text; ///< not used with a variable
        std::uint32_t delayMs = 0;
        std::uint32_t timeoutMs = 0; ///< 0: the agent chooses when the popup is shown
        bool hasOkButton = true;
        std::optional<Binding> variable;
    };
    struct Room {
        std::uint32_t id = 0;
        std::int32_t volume = -1; ///< 0 to 100; -1 and 0 leave the room's own
    };
    struct Navigator {
        std::uint32_t id = 0;
        std::uint32_t room = 0;
        bool isOnscreen = true;
    };

    std::uint32_t id = 0; ///< 0 for one that is not stored yet
    std::string name;
    Audio audio;
    Video video;
    std::vector<Room> rooms;           ///< by id
    std::vector<Navigator> navigators; ///< by id
    HouseAddition house;
    /// Another one when people have changed the announcement; given by `Announcements`, as an ETag is
    /// written.
    std::string tag;
};

using AnnouncementPointer = std::shared_ptr<const Announcement>;

} // namespace controller
