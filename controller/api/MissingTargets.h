#pragma once

#include "controller/announcements/Announcement.h"
#include "controller/house/House.h"
#include "controller/state/AnnouncementRow.h"

#include <string>
#include <vector>

/// What an announcement names and the house does not have. It is stored all the same: the house file may get
/// it tomorrow; but nothing is heard or shown there until then.
namespace controller::missing_targets {

/// "room 99", "navigator 98": rooms first, in the announcement's order.
[[nodiscard]] std::vector<std::string> In(const Announcement& announcement, const House& house);

/// The same in one line, "room 99, navigator 98"; empty when there are none.
[[nodiscard]] std::string ListedIn(const Announcement& announcement, const House& house);
[[nodiscard]] std::string ListedIn(const AnnouncementRow& row, const House& house);

} // namespace controller::missing_targets
