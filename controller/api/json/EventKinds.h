#pragma once

#include "controller/api/json/Fields.h"
#include "controller/events/Event.h"

#include <memory>
#include <string>
#include <vector>

namespace controller {

/// The fields of a message about an event: the frame, and the event's own as its data.
class EventMessage {
public:
    /// `name` is the schema's, `example` an event of the kind.
    EventMessage(const char* type, std::string name, const Event& example, std::vector<fields::Field> rows);

    [[nodiscard]] const fields::Object& Whole() const noexcept { return m_whole; }

private:
    const fields::ConstantType m_type;
    const fields::Object m_data;
    const fields::Object m_whole;
};

/// One kind of event, as it is told.
struct EventKind {
    const char* type = nullptr;
    std::unique_ptr<const EventMessage> message;
    std::unique_ptr<const EventMessage> pageMessage; ///< to a navigator's page; null: not told there
};

/// All of them, each at the index that it has in `EventData`.
[[nodiscard]] const std::vector<EventKind>& EventKinds();

} // namespace controller
