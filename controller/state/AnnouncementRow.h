#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace controller {

/// One announcement as the database holds it.
struct AnnouncementRow {
    std::int64_t key = 0; ///< by which the agent knows it; its XML may carry another id
    std::string xml;      ///< the agent's own element; where rows are changed, empty for one that is gone
    std::string house;    ///< what the house adds, as a "house" element; empty without
};

using AnnouncementRows = std::vector<AnnouncementRow>;

} // namespace controller
