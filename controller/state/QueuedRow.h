#pragma once

#include "controller/state/WriteDone.h"

#include <cstdint>
#include <string>
#include <vector>

namespace controller {

/// One announcement that waits to be played, as the database holds it.
struct QueuedRow {
    std::uint64_t entry = 0;
    std::uint32_t announcement = 0;
    std::string name;
    std::int64_t askedAtMs = 0; ///< since 1970, UTC
};

using QueuedRows = std::vector<QueuedRow>;

/// Where it is kept what waits. Driver thread only.
class IQueueStore {
public:
    /// Puts the rows, in their order, in the place of all that there are.
    virtual void WriteQueue(QueuedRows rows, WriteDone done) = 0;

protected:
    ~IQueueStore() = default;
};

} // namespace controller
