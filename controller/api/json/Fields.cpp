#include "controller/api/json/Fields.h"

#include "controller/api/ApiError.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cassert>

namespace controller::fields {

Field Itself(const char* name, std::shared_ptr<const Type> type, const char* words) {
    const Type* const borrowed = type.get();
    const auto get = [](const void* object) {
        return object;
    };
    return {name, words, borrowed, get, nullptr, std::move(type)};
}

Object::Object(std::string name, std::vector<Field> rows) : m_name(std::move(name)), m_rows(std::move(rows)) {
    for (const Field& row : m_rows)
        m_starts.push_back(",\"" + std::string(row.name) + "\":");
}

void Object::Write(std::string& out, const void* object) const {
    const std::size_t start = out.size();
    for (std::size_t index = 0; index < m_rows.size(); ++index) {
        const Field& row = m_rows[index];
        const void* const value = row.get(object);
        const bool isLacking = row.whenEmpty != WhenEmpty::Itself && row.type->IsEmpty(value);
        if (isLacking && row.whenEmpty == WhenEmpty::LeftOut)
            continue;
        out += m_starts[index];
        if (isLacking)
            out += "null";
        else
            row.type->Write(out, value);
    }
    if (out.size() == start)
        out += '{';
    out[start] = '{';
    out += '}';
}

void Object::Read(const Json& json, const Place& place, const Limits& /*limits*/, void* object) const {
    if (!json.is_object())
        throw ApiError(400, place.Text() + " is no object", "a JSON object");
    for (const Field& row : m_rows) {
        const Place inner(place, row.name);
        const auto found = json.find(row.name);
        if (found != json.end() && !found->is_null())
            // The object is not constant, so no member of it is.
            row.type->Read(*found, inner, row.limits, const_cast<void*>(row.get(object)));
        else if (row.isRequired)
            throw ApiError(400, inner.Text() + " is missing", row.right);
    }
    RefuseOthers(json, place);
}

void Object::RefuseOthers(const Json& json, const Place& place) const {
    std::set<std::string_view> names;
    for (const Field& row : m_rows)
        names.insert(row.name);
    for (const auto& [name, value] : json.items()) {
        if (names.count(name) != 0)
            continue;
        std::string known;
        for (const std::string_view one : names)
            known.append(known.empty() ? "only " : ", ").append(one);
        throw ApiError(400, "unknown member " + Place(place, name).Text(),
                       known.empty() ? "an empty object" : known);
    }
}

std::string Object::KeyOf(const void* object) const {
    const auto row = std::find_if(m_rows.begin(), m_rows.end(),
                                  [this](const Field& one) { return one.name == KeyName(); });
    assert(row != m_rows.end() && "entries of a list without repetitions need an id");
    return row->type->KeyOf(row->get(object));
}

} // namespace controller::fields
