#pragma once

#include "controller/announcements/Announcement.h"
#include "controller/api/json/List.h"
#include "controller/events/Event.h"
#include "controller/state/StateDatabase.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace controller {

fields::Object TableOf(fields::For<HistoryEntry> type);
fields::Object TableOf(fields::For<Queued> type);

/// What has been played, and what playing would do, as the API gives it.
namespace view {

using fields::Object;

template <>
inline constexpr ListWords kListWords<std::vector<HistoryEntry>>{"History", "history", "Newest first"};
using History = List<std::vector<HistoryEntry>>;

template <>
inline constexpr ListWords kListWords<std::vector<Queued>>{"Queue", "queue", "The next one first"};
using Queue = List<std::vector<Queued>>;

/// A body.
struct QueueMove {
    std::optional<std::uint64_t> before;

    static Object Table();
};

/// What a rehearsal plays: a stored announcement, or one that is given.
struct Rehearsed {
    std::uint32_t id = 0; ///< 0 when the announcement itself is given
    std::optional<Announcement> announcement;

    static const fields::Type& Table();
};

/// A body.
struct RehearsalOrder {
    Rehearsed announcement;
    std::uint32_t streamReadyMs = 20;
    std::optional<std::uint32_t> soundMs; ///< nothing: as long as the file is

    static Object Table();
};

/// The variable that a message follows.
struct FollowedVariable {
    std::uint32_t device = 0;
    std::uint32_t variable = 0;

    static Object Table();
};

/// One thing that happens; what it is says which of the others there are.
struct Moment {
    std::uint64_t atMs = 0;
    std::string what;
    std::optional<std::int64_t> announcement;
    std::optional<std::int64_t> room;
    std::optional<std::int64_t> volume;
    std::optional<std::string> file;
    std::optional<std::int64_t> navigator;
    std::optional<FollowedVariable> variable;
    std::optional<std::string> message;
    std::optional<std::string> image;
    std::optional<std::uint64_t> durationMs;
    std::optional<bool> hasOkButton;
    std::optional<std::string> level;
    std::optional<std::string> text;

    static Object Table();
};

struct Rehearsal {
    std::uint32_t announcement = 0;
    std::uint64_t lengthMs = 0;
    bool isComplete = false;
    std::vector<Moment> timeline;

    static Object Table();
};

} // namespace view

} // namespace controller
