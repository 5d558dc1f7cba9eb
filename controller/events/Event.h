#pragma once

#include "controller/driver/Log.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace controller {

struct Announcement;

/// One announcement that waits to be played, until the agent is asked for it.
struct Queued {
    std::uint64_t entry = 0; ///< no two have the same
    std::uint32_t announcement = 0;
    std::string name; ///< as it was when it was asked for
    std::chrono::system_clock::time_point askedAt;
};

struct PlayingSound {
    std::string file;
    std::chrono::system_clock::time_point since;
    std::int64_t lengthMs = 0; ///< 0 while it is not known
};

/// What plays, and how far it has come.
struct PlayingNow {
    std::uint32_t announcement = 0;
    std::string name;
    std::chrono::system_clock::time_point since;
    std::chrono::system_clock::time_point ends; ///< probably
    bool canBeDismissed = false;                ///< a popup of it stands
    bool isStopped = false;
    std::optional<PlayingSound> sound;
};

/// What happens in the house, one structure a kind. Ids are those of the house file and of the agent.
namespace events {

/// Somebody asks for the announcement with this id; told before the agent is.
struct PlayAsked {
    std::uint32_t announcement = 0;
    std::uint64_t entry = 0; ///< under which it waits, or would have; 0: the agent's own queue has it
};

/// What waits to be played, the next one first.
struct QueueChanged {
    std::vector<Queued> queue;
};

/// The agent has begun to play the announcement with this id.
struct AnnouncementStarted {
    std::uint32_t announcement = 0;
};

/// What plays has come further, or is expected to end otherwise; nothing when nothing plays.
struct PlayingChanged {
    std::optional<PlayingNow> playing;
};

/// Somebody has stopped the announcement that plays; the agent lets go of it soon.
struct AnnouncementStopped {
    std::uint32_t announcement = 0;
};

/// The agent has let go of the announcement that was playing.
struct AnnouncementEnded {
    std::uint32_t announcement = 0;
};

/// Somebody has stored or changed an announcement.
struct AnnouncementStored {
    std::uint32_t announcement = 0;
    std::shared_ptr<const Announcement> now = nullptr; ///< as it is
};

struct AnnouncementRemoved {
    std::uint32_t announcement = 0;
};

/// The stream plays in the room from now on; `volume` is the room's own, kept for later.
struct RoomSetUp {
    std::uint32_t room = 0;
    unsigned volume = 0;
};

/// The volume at which the room is heard has changed.
struct RoomVolumeChanged {
    std::uint32_t room = 0;
    unsigned volume = 0;
};

/// The room has gone back to `volume`; `isChangedMeanwhile` when somebody had set another one and that one
/// stays.
struct RoomRestored {
    std::uint32_t room = 0;
    unsigned volume = 0;
    bool isChangedMeanwhile = false;
};

/// The room's output fails; the other rooms play on.
struct RoomOutputFailed {
    std::uint32_t room = 0;
    std::string reason;
};

enum class RoomHealth { Unknown, Healthy, Silent, Unheard };

/// It has become known, or is otherwise than before, whether the room would be heard now; `reason` says why
/// it would not.
struct RoomHealthChanged {
    std::uint32_t room = 0;
    RoomHealth health = RoomHealth::Unknown;
    std::string reason;
};

/// The room's screens are wanted, or may go back to rest.
struct ScreensWoken {
    std::uint32_t room = 0;
};
struct ScreensRested {
    std::uint32_t room = 0;
};

struct SoundStarted {
    std::string file;
};

/// `error` is empty when the file was played to its end.
struct SoundEnded {
    std::string file;
    std::string error;
};

/// `duration` counts from now.
struct PopupShown {
    std::uint64_t number = 0;
    std::uint32_t navigator = 0;
    std::string message;
    std::string image;
    std::chrono::milliseconds duration{};
    bool hasOkButton = false;
};

/// The variable that the popup's message is bound to has a new value.
struct PopupChanged {
    std::uint64_t number = 0;
    std::uint32_t navigator = 0;
    std::string message;
};

/// `Hidden`: taken away without a word from a person, as when the controller ends.
enum class PopupEnd { TimeIsUp, Hidden, Dismissed, Replaced };

struct PopupHidden {
    std::uint64_t number = 0;
    std::uint32_t navigator = 0;
    PopupEnd why = PopupEnd::TimeIsUp;
};

/// Of the window that a navigator's page is shown in, in CSS pixels.
struct ScreenSize {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
};

/// So many pages of the navigator are connected now, and this is their size.
struct PagesChanged {
    std::uint32_t navigator = 0;
    std::size_t pages = 0;
    std::optional<ScreenSize> size = std::nullopt; ///< of the page that told its size and came last
    std::optional<bool> isArmed = std::nullopt;    ///< whether one can be heard; where rooms play on it
};

struct VariableChanged {
    std::uint32_t device = 0;
    std::uint32_t variable = 0;
    std::string value;
};

/// Somebody has brought a file into the media folder, under a new name or in another's place; or has deleted
/// one.
struct MediaStored {
    std::string name;
};
struct MediaRemoved {
    std::string name;
};

/// The voice has not spoken, for another reason than before; it speaks again.
struct VoiceFailed {
    std::string voice;
    std::string reason;
};
struct VoiceRecovered {
    std::string voice;
};

/// The agent's state stands on the disk; or could not be written, is kept in memory and will be tried again.
struct StateSaved {};
struct StateNotSaved {
    std::string reason;
};

struct LogLine {
    Severity severity = Severity::Notice;
    std::string text;
};

} // namespace events

using EventData = std::variant<events::PlayAsked,
                               events::QueueChanged,
                               events::AnnouncementStarted,
                               events::PlayingChanged,
                               events::AnnouncementStopped,
                               events::AnnouncementEnded,
                               events::AnnouncementStored,
                               events::AnnouncementRemoved,
                               events::RoomSetUp,
                               events::RoomVolumeChanged,
                               events::RoomRestored,
                               events::RoomOutputFailed,
                               events::RoomHealthChanged,
                               events::ScreensWoken,
                               events::ScreensRested,
                               events::SoundStarted,
                               events::SoundEnded,
                               events::PopupShown,
                               events::PopupChanged,
                               events::PopupHidden,
                               events::PagesChanged,
                               events::VariableChanged,
                               events::MediaStored,
                               events::MediaRemoved,
                               events::VoiceFailed,
                               events::VoiceRecovered,
                               events::StateSaved,
                               events::StateNotSaved,
                               events::LogLine>;

/// One event of the feed; numbers start at 1 and grow by 1.
struct Event {
    std::uint64_t number = 0;
    std::chrono::system_clock::time_point time;
    EventData data;
};

} // namespace controller
