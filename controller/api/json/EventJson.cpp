#include "controller/api/json/EventJson.h"

#include "controller/api/json/AnnouncementJson.h"
#include "controller/api/json/EventKinds.h"

#include <nlohmann/json.hpp>

namespace controller {

namespace {

using fields::Itself;
using fields::Member;
using fields::Object;

const EventKind& KindOf(const Event& event) {
    return EventKinds()[event.data.index()];
}

/// One of several messages, told apart by their "type".
class UnionType : public fields::GivenType {
public:
    UnionType(std::string name, std::vector<const fields::Type*> members)
        : m_name(std::move(name))
        , m_members(std::move(members)) {}

    void Write(std::string& /*out*/, const void* /*value*/) const override {
        throw std::logic_error("this is only a description");
    }

    void Describe(fields::Schema& schema,
                  const fields::Limits& /*limits*/,
                  fields::Components& components) const override {
        fields::Schema members = fields::Schema::array();
        for (const fields::Type* const one : m_members)
            one->Describe(members.emplace_back(), {}, components);
        components.schemas[m_name] = {{"oneOf", std::move(members)}};
        schema["$ref"] = "#/components/schemas/" + m_name;
    }

protected:
    ~UnionType() = default;

private:
    const std::string m_name;
    const std::vector<const fields::Type*> m_members;
};

std::vector<const fields::Type*> Messages() {
    std::vector<const fields::Type*> messages;
    for (const EventKind& kind : EventKinds())
        messages.push_back(&kind.message->Whole());
    return messages;
}

std::vector<const fields::Type*> PageMessages() {
    std::vector<const fields::Type*> messages{&fields::TypeOf<view::PageStateMessage>(),
                                              &fields::TypeOf<view::Alive>()};
    for (const EventKind& kind : EventKinds()) {
        if (kind.pageMessage)
            messages.push_back(&kind.pageMessage->Whole());
    }
    return messages;
}

class AnyEvent final : public UnionType {
public:
    AnyEvent() : UnionType("Event", Messages()) {}
    void Write(std::string& out, const void* event) const override {
        KindOf(*static_cast<const Event*>(event)).message->Whole().Write(out, event);
    }
};

class AnyMessage final : public UnionType {
public:
    using UnionType::UnionType;
};

const fields::ConstantType& StateName() {
    static const fields::ConstantType kType("state");
    return kType;
}

} // namespace

const fields::Type& TableOf(fields::For<Event> /*type*/) {
    static const AnyEvent kType;
    return kType;
}

namespace event_json {

const char* TypeOf(const Event& event) {
    return KindOf(event).type;
}

std::string Message(const Event& event) {
    return fields::ToText(event);
}

std::optional<std::string> PageMessage(const Event& event) {
    const auto& message = KindOf(event).pageMessage;
    if (!message)
        return std::nullopt;
    std::string text;
    message->Whole().Write(text, &event);
    return text;
}

} // namespace event_json

namespace view {

const Object& EventList::Table() {
    static const Object kTable("EventList", EventList(),
                               {Member<&EventList::events>("events", "Oldest first")});
    return kTable;
}

const Object& Alive::Table() {
    static const fields::ConstantType kName("alive");
    static const Object kTable("Alive", Alive(), {Itself("type", kName)});
    return kTable;
}

const Object& StateMessage::Table() {
    static const Object kTable("StateMessage", StateMessage(),
                               {Member<&StateMessage::number>("seq", "The number of the last event"),
                                Member<&StateMessage::time>("time"), Itself("type", StateName()),
                                Member<&StateMessage::state>("data")});
    return kTable;
}

const Object& PageStateMessage::Table() {
    using Message = PageStateMessage;
    static const Object kTable("PageStateMessage", Message(),
                               {Member<&Message::number>("seq", "The number of the last event"),
                                Member<&Message::time>("time"), Itself("type", StateName()),
                                Member<&Message::state>("data")});
    return kTable;
}

const fields::Type& WatcherMessage::Table() {
    static const AnyMessage kType("WatcherMessage", {&fields::TypeOf<StateMessage>(),
                                                     &fields::TypeOf<Alive>(), &fields::TypeOf<Event>()});
    return kType;
}

const fields::Type& PageMessage::Table() {
    static const AnyMessage kType("PageMessage", PageMessages());
    return kType;
}

} // namespace view

} // namespace controller
