#pragma once

#include "controller/api/json/Fields.h"
#include "controller/events/Event.h"

#include <memory>
#include <vector>

namespace controller {

/// One kind of event, as it is told.
struct EventKind {
    const char* type = nullptr;
    std::unique_ptr<const fields::Object> message;     ///< the frame, and the event's own fields as its data
    std::unique_ptr<const fields::Object> pageMessage; ///< to a navigator's page; null: not told there
};

/// All of them, each at the index that it has in `EventData`.
[[nodiscard]] const std::vector<EventKind>& EventKinds();

} // namespace controller
