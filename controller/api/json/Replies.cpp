#include "controller/api/json/Replies.h"

#include "controller/api/ApiError.h"
#include "controller/rooms/Variables.h"

#include <nlohmann/json.hpp>

namespace controller::view {

using fields::Member;

namespace {

/// An object of texts whose names are anybody's.
class ParametersType final : public fields::TakenType {
    void Read(const fields::Json& json,
              const fields::Place& place,
              const fields::Limits& /*limits*/,
              void* value) const override {
        static constexpr const char* kRight = "an object of texts: the parameters";
        if (!json.is_object())
            throw ApiError(400, place.Text() + " is no object", kRight);
        for (const auto& [name, text] : json.items()) {
            if (!text.is_string())
                throw ApiError(400, name + " is no text", kRight);
            static_cast<Parameters*>(value)->values.emplace_back(name, text.get<std::string>());
        }
    }
    void Describe(fields::Schema& schema,
                  const fields::Limits& /*limits*/,
                  fields::Components& components) const override {
        components.schemas["Parameters"] = {{"type", "object"},
                                            {"additionalProperties", {{"type", "string"}}}};
        schema["$ref"] = "#/components/schemas/Parameters";
    }
};

} // namespace

const fields::Type& Parameters::Table() {
    static const ParametersType kType;
    return kType;
}

const Object& Nothing::Table() {
    static const Object kTable("Nothing", Nothing(), {});
    return kTable;
}

const Object& User::Table() {
    static const Object kTable("User", User(), {Member<&User::id>("id").AsId(), Member<&User::name>("name")});
    return kTable;
}

const Object& Problem::Table() {
    static const Object kTable(
        "Problem", Problem(),
        {Member<&Problem::type>("type"), Member<&Problem::title>("title"), Member<&Problem::status>("status"),
         Member<&Problem::detail>("detail", "What is wrong, and where"),
         Member<&Problem::right>("right", "What would be right").LeftOutWhenEmpty(),
         Member<&Problem::users>("users", "The announcements that use the file that was to be removed")
             .LeftOutWhenEmpty()});
    return kTable;
}

const Object& Played::Table() {
    static const Object kTable("Played", Played(),
                               {Member<&Played::announcement>("announcement").AsId(),
                                Member<&Played::state>("state").OneOf({"playing", "waiting"})});
    return kTable;
}

const Object& Dismissed::Table() {
    static const Object kTable(
        "Dismissed", Dismissed(),
        {Member<&Dismissed::announcement>("announcement", "What was playing; null when nothing was").AsId()});
    return kTable;
}

const Object& Confirmed::Table() {
    static const Object kTable("Confirmed", Confirmed(), {Member<&Confirmed::isDismissed>("dismissed")});
    return kTable;
}

const Object& Volume::Table() {
    static const Object kTable("Volume", Volume(),
                               {Member<&Volume::volume>("volume").Between(0, 100).Required()});
    return kTable;
}

const Object& RoomVolume::Table() {
    static const Object kTable("RoomVolume", RoomVolume(),
                               {Member<&RoomVolume::id>("id").AsId(),
                                Member<&RoomVolume::volume>("volume", "That it now has").Between(0, 100)});
    return kTable;
}

const Object& VariableValue::Table() {
    static const Object kTable(
        "VariableValue", VariableValue(),
        {Member<&VariableValue::value>("value").AtMostBytes(Variables::kMaxValue).Required()});
    return kTable;
}

const Object& Ticket::Table() {
    static const Object kTable("Ticket", Ticket(),
                               {Member<&Ticket::ticket>("ticket"),
                                Member<&Ticket::expiresInMs>("expires_in_ms"),
                                Member<&Ticket::rights>("rights")});
    return kTable;
}

const Object& OperationView::Parameter::Table() {
    static const Object kTable("OperationParameter", Parameter(),
                               {Member<&Parameter::name>("name"),
                                Member<&Parameter::in>("in").OneOf({"path", "query"}),
                                Member<&Parameter::summary>("summary")});
    return kTable;
}

const Object& OperationView::Table() {
    static const Object kTable(
        "Operation", OperationView(),
        {Member<&OperationView::name>("name"), Member<&OperationView::method>("method"),
         Member<&OperationView::path>("path"), Member<&OperationView::right>("right"),
         Member<&OperationView::summary>("summary"), Member<&OperationView::parameters>("parameters")});
    return kTable;
}

const Object& OperationList::Table() {
    static const Object kTable("OperationList", OperationList(),
                               {Member<&OperationList::operations>("operations")});
    return kTable;
}

const Object& Health::Table() {
    static const Object kTable("Health", Health(), {Member<&Health::status>("status")});
    return kTable;
}

} // namespace controller::view
