#include "controller/api/json/Replies.h"

#include "controller/api/ApiError.h"
#include "controller/api/json/Meaning.h"
#include "controller/rooms/Variables.h"
#include "rehearsal/JsonText.h"

#include <nlohmann/json.hpp>

namespace controller::view {

using fields::Member;

namespace {

/// An object of texts whose names are anybody's.
class ParametersType final : public fields::Type {
    void Write(std::string& out, const void* value) const override {
        out += '{';
        for (const auto& [name, text] : static_cast<const Parameters*>(value)->values) {
            if (out.back() != '{')
                out += ',';
            fields::Append(out, name);
            out += ':';
            fields::Append(out, text);
        }
        out += '}';
    }
    [[nodiscard]] bool IsEmpty(const void* value) const override {
        return static_cast<const Parameters*>(value)->values.empty();
    }
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

/// Described with the texts that the codes stand for, which are the only list of them.
class MeaningCodeType final : public fields::Type {
    void Write(std::string& out, const void* value) const override {
        AppendJsonText(out, static_cast<const MeaningCode*>(value)->text);
    }
    void Describe(fields::Schema& schema,
                  const fields::Limits& /*limits*/,
                  fields::Components& components) const override {
        auto& described = components.schemas["Code"];
        described = {{"type", "string"},
                     {"description", "x-texts has what each means, with its values in braces"},
                     {"enum", fields::Schema::array()},
                     {"x-texts", fields::Schema::object()}};
        for (const MeantText& row : MeantTexts()) {
            auto& texts = described["x-texts"][row.code];
            if (texts.is_null())
                described["enum"].push_back(row.code);
            texts.push_back(row.text);
        }
        schema["$ref"] = "#/components/schemas/Code";
    }
};

} // namespace

const fields::Type& MeaningCode::Table() {
    static const MeaningCodeType kType;
    return kType;
}

const fields::Type& Parameters::Table() {
    static const ParametersType kType;
    return kType;
}

Object Nothing::Table() {
    return {"Nothing", {}};
}

Object User::Table() {
    return {"User", {Member<&User::id>("id").AsId(), Member<&User::name>("name")}};
}

Object Problem::Table() {
    return {"Problem",
            {Member<&Problem::type>("type"), Member<&Problem::title>("title"),
             Member<&Problem::status>("status"),
             Member<&Problem::detail>("detail", "What is wrong, and where"),
             Member<&Problem::right>("right", "What would be right").LeftOutWhenEmpty(),
             Member<&Problem::users>("users", "The announcements that use the file that was to be removed")
                 .LeftOutWhenEmpty(),
             Member<&Problem::code>("code"),
             Member<&Problem::params>("params", "What stands in the places of the code's text; right.code: "
                                                "what \"right\" means")
                 .LeftOutWhenEmpty(),
             Member<&Problem::durationMs>("duration_ms", "How long the sound is that is too long")
                 .LeftOutWhenEmpty()}};
}

Object Played::Table() {
    return {"Played",
            {Member<&Played::announcement>("announcement").AsId(),
             Member<&Played::state>("state").OneOf({"playing", "waiting"}),
             Member<&Played::entry>("entry", "Its number in the queue; 0 when it played already")}};
}

Object Dismissed::Table() {
    return {
        "Dismissed",
        {Member<&Dismissed::announcement>("announcement", "What was playing; null when nothing was").AsId()}};
}

Object Stopped::Table() {
    return {"Stopped", {Member<&Stopped::isStopped>("stopped", "False when nothing played")}};
}

Object Confirmed::Table() {
    return {"Confirmed", {Member<&Confirmed::isDismissed>("dismissed")}};
}

Object Volume::Table() {
    return {"Volume", {Member<&Volume::volume>("volume").Between(0, 100).Required()}};
}

Object RoomVolume::Table() {
    return {"RoomVolume",
            {Member<&RoomVolume::id>("id").AsId(),
             Member<&RoomVolume::volume>("volume", "That it now has").Between(0, 100)}};
}

Object VariableValue::Table() {
    return {"VariableValue",
            {Member<&VariableValue::value>("value").AtMostBytes(Variables::kMaxValue).Required()}};
}

Object Ticket::Table() {
    return {"Ticket",
            {Member<&Ticket::ticket>("ticket"), Member<&Ticket::expiresInMs>("expires_in_ms"),
             Member<&Ticket::rights>("rights")}};
}

Object Health::Table() {
    return {"Health", {Member<&Health::status>("status")}};
}

} // namespace controller::view

namespace controller {

HttpReply
Problem(const HttpRefusal& refusal, std::vector<view::User> users, const ApiError::ForPrograms& forPrograms) {
    const auto title = std::string(StatusText(refusal.status));
    Meaning meaning = MeaningOf(refusal.detail, forPrograms.code);
    AddMeaning(meaning.params, "right", refusal.right);
    HttpReply reply;
    reply.status = refusal.status;
    reply.contentType = "application/problem+json";
    reply.headers = refusal.headers;
    reply.body = fields::ToText(view::Problem{"about:blank", title, refusal.status, refusal.detail,
                                              refusal.right, std::move(users), std::move(meaning.code),
                                              std::move(meaning.params), forPrograms.durationMs});
    return reply;
}

} // namespace controller
