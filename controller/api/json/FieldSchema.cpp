#include "controller/api/json/Fields.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace controller::fields {

namespace {

Schema Reference(const std::string& name) {
    return {{"$ref", "#/components/schemas/" + name}};
}

/// The same, or null.
Schema OrNull(const Schema& schema) {
    if (schema.contains("$ref"))
        return {{"oneOf", {schema, {{"type", "null"}}}}};
    Schema widened = schema;
    widened["type"] = {schema["type"], "null"};
    return widened;
}

} // namespace

void ConstantType::Describe(Schema& schema, const Limits& /*limits*/, Components& /*components*/) const {
    schema["type"] = "string";
    schema["const"] = m_text;
}

void TruthType::Describe(Schema& schema, const Limits& /*limits*/, Components& /*components*/) const {
    schema["type"] = "boolean";
}

void TextType::Describe(Schema& schema, const Limits& limits, Components& /*components*/) const {
    schema["type"] = "string";
    if (limits.mostBytes != Limits().mostBytes)
        schema["maxLength"] = limits.mostBytes;
    if (!limits.oneOf.empty())
        schema["enum"] = limits.oneOf;
}

void TimeType::Describe(Schema& schema, const Limits& /*limits*/, Components& /*components*/) const {
    schema["type"] = "string";
    schema["format"] = "date-time";
}

void NumberType::Describe(Schema& schema, const Limits& limits, Components& /*components*/) const {
    const std::int64_t least = std::max(m_least, limits.least);
    const std::int64_t most = std::min(m_most, limits.most);
    schema["type"] = "integer";
    if (least != Limits().least)
        schema["minimum"] = least;
    if (most != Limits().most)
        schema["maximum"] = most;
}

void ListType::Describe(Schema& schema, const Limits& limits, Components& components) const {
    schema["type"] = "array";
    if (limits.mostEntries != Limits().mostEntries)
        schema["maxItems"] = limits.mostEntries;
    Entries().Describe(schema["items"], limits, components);
}

void MaybeType::Describe(Schema& schema, const Limits& limits, Components& components) const {
    Schema inner;
    Present().Describe(inner, limits, components);
    schema = OrNull(inner);
}

void Object::Describe(Schema& schema, const Limits& /*limits*/, Components& components) const {
    if (m_name.empty()) {
        DescribeMembers(schema, components);
        return;
    }
    const auto [place, isNew] = components.names.try_emplace({this, components.isTaken});
    if (isNew) {
        // What is both given and taken has two descriptions: less is needed in what is taken.
        place->second = components.schemas.contains(m_name) ? m_name + "Body" : m_name;
        components.schemas[place->second] = Schema::object();
        Schema members;
        DescribeMembers(members, components);
        components.schemas[place->second] = std::move(members);
    }
    schema = Reference(components.names.at({this, components.isTaken}));
}

Schema Object::DescribeMember(const Field& row, Components& components) const {
    Schema member;
    const Type& type = row.whenEmpty == WhenEmpty::LeftOut ? row.type->Present() : *row.type;
    type.Describe(member, row.limits, components);
    if (row.whenEmpty == WhenEmpty::Null)
        member = OrNull(member);
    if (*row.words != '\0')
        member["description"] = row.words;
    if (components.isTaken && !row.isRequired && row.start != nullptr && row.type->Noun() != Noun()) {
        std::string first;
        row.type->Write(first, row.get(row.start().get()));
        member["default"] = Schema::parse(first);
    }
    return member;
}

void Object::DescribeMembers(Schema& schema, Components& components) const {
    Schema required = Schema::array();
    Schema properties = Schema::object();
    for (const Field& row : m_rows) {
        const bool isAlwaysGiven = row.whenEmpty != WhenEmpty::LeftOut;
        if (components.isTaken ? row.isRequired : isAlwaysGiven)
            required.push_back(row.name);
        properties[row.name] = DescribeMember(row, components);
    }
    schema["type"] = "object";
    if (!required.empty())
        schema["required"] = std::move(required);
    if (components.isTaken)
        schema["additionalProperties"] = false;
    schema["properties"] = std::move(properties);
}

} // namespace controller::fields
