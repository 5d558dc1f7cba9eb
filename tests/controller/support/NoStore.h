#pragma once

#include "controller/state/IRoomStore.h"
#include "controller/state/IVariableStore.h"
#include "controller/state/QueuedRow.h"

namespace controller {

/// Keeps nothing, and answers nobody.
class NoStore final : public IRoomStore, public IVariableStore, public IQueueStore {
public:
    void WriteRooms(std::vector<RoomRow> /*rows*/, WriteDone /*done*/) override {}
    void WriteQueue(QueuedRows /*rows*/, WriteDone /*done*/) override {}
    void WriteVariable(std::uint32_t /*device*/,
                       std::uint32_t /*variable*/,
                       const std::string& /*value*/,
                       WriteDone /*done*/) override {}
};

} // namespace controller
