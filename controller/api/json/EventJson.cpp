#include "controller/api/json/EventJson.h"

#include "controller/api/json/AnnouncementJson.h"
#include "controller/api/json/EventKinds.h"
#include "controller/api/json/SoundMessages.h"

#include <nlohmann/json.hpp>

namespace controller {

namespace {

using fields::Constant;
using fields::Member;
using fields::Object;

const EventKind& KindOf(const Event& event) {
    return EventKinds()[event.data.index()];
}

/// One of several messages, told apart by their "type".
class UnionType : public fields::Type {
public:
    UnionType(std::string name, std::vector<const fields::Type*> members)
        : m_name(std::move(name))
        , m_members(std::move(members)) {}

    void Describe(fields::Schema& schema,
                  const fields::Limits& /*limits*/,
                  fields::Components& components) const final {
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

/// The messages of all kinds that have this one, behind others.
std::vector<const fields::Type*> AllMessages(std::unique_ptr<const Object> EventKind::*message,
                                             std::vector<const fields::Type*> messages = {}) {
    for (const EventKind& kind : EventKinds()) {
        if (kind.*message)
            messages.push_back((kind.*message).get());
    }
    return messages;
}

class AnyEvent final : public UnionType {
public:
    AnyEvent() : UnionType("Event", AllMessages(&EventKind::message)) {}
    void Write(std::string& out, const void* event) const override {
        KindOf(*static_cast<const Event*>(event)).message->Write(out, event);
    }
};

class AnyMessage final : public UnionType {
public:
    using UnionType::UnionType;
};

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
    message->Write(text, &event);
    return text;
}

} // namespace event_json

namespace view {

Object Alive::Table() {
    return {"Alive", {Constant("type", "alive")}};
}

template <class State>
Object FirstMessage<State>::Table() {
    return {std::is_same_v<State, WholeState> ? "StateMessage" : "PageStateMessage",
            {Member<&FirstMessage::number>("seq", "The number of the last event"),
             Member<&FirstMessage::time>("time"), Constant("type", "state"),
             Member<&FirstMessage::state>("data")}};
}
template struct FirstMessage<WholeState>;
template struct FirstMessage<PageState>;

const fields::Type& WatcherMessage::Table() {
    static const AnyMessage kType("WatcherMessage", {&fields::TypeOf<StateMessage>(),
                                                     &fields::TypeOf<Alive>(), &fields::TypeOf<Event>()});
    return kType;
}

const fields::Type& PageMessage::Table() {
    static const AnyMessage kType("PageMessage", [] {
        auto first = SoundMessages();
        first.insert(first.begin(), {&fields::TypeOf<PageStateMessage>(), &fields::TypeOf<Alive>()});
        return AllMessages(&EventKind::pageMessage, std::move(first));
    }());
    return kType;
}

} // namespace view

} // namespace controller
