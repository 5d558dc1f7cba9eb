#include "controller/api/json/FieldType.h"

#include "controller/api/ApiError.h"
#include "controller/state/UtcText.h"
#include "rehearsal/JsonText.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <chrono>
#include <stdexcept>

namespace controller::fields {

namespace {

using TimePoint = std::chrono::system_clock::time_point;

/// The value, for a message.
std::string Quoted(const Json& value) {
    std::string text = value.dump(-1, ' ', false, Json::error_handler_t::replace);
    if (text.size() > 60)
        text = text.substr(0, 57) + "...";
    return text;
}

ApiError Wrong(const Place& place, const Json& value, const char* what, std::string right) {
    return {400, place.Text() + ": " + Quoted(value) + " is " + what, std::move(right)};
}

} // namespace

std::string Place::Text() const {
    const bool isInBody = m_outer != nullptr && m_outer->m_outer == nullptr && m_outer->m_name.empty();
    std::string outer = m_outer != nullptr && !isInBody ? m_outer->Text() : "";
    if (m_index != kNoIndex)
        return outer + "[" + std::to_string(m_index) + "]";
    if (m_outer == nullptr && m_name.empty())
        return "the body";
    return (outer.empty() ? "" : outer + ".") + std::string(m_name);
}

void Type::Read(const Json& /*json*/, const Place& place, const Limits& /*limits*/, void* /*value*/) const {
    throw std::logic_error(place.Text() + " is only given");
}

void Type::Write(std::string& /*out*/, const void* /*value*/) const {
    throw std::logic_error("this is only taken");
}

void ConstantType::Write(std::string& out, const void* /*value*/) const {
    AppendJsonText(out, m_text);
}

void TruthType::Write(std::string& out, const void* value) const {
    out += *static_cast<const bool*>(value) ? "true" : "false";
}

void TruthType::Read(const Json& json, const Place& place, const Limits& /*limits*/, void* value) const {
    if (!json.is_boolean())
        throw Wrong(place, json, "no truth value", "true or false");
    *static_cast<bool*>(value) = json.get<bool>();
}

bool TruthType::IsEmpty(const void* value) const {
    return !*static_cast<const bool*>(value);
}

void TextType::Write(std::string& out, const void* value) const {
    const auto& text = *static_cast<const std::string*>(value);
    const bool isAscii = std::all_of(text.begin(), text.end(), [](char letter) {
        return (static_cast<unsigned char>(letter) & 0x80U) == 0;
    });
    if (isAscii)
        AppendJsonText(out, text);
    else
        out += Json(text).dump(-1, ' ', false, Json::error_handler_t::replace);
}

void TextType::Read(const Json& json, const Place& place, const Limits& limits, void* value) const {
    if (!json.is_string())
        throw Wrong(place, json, "no text", "a text");
    const auto& text = json.get_ref<const std::string&>();
    if (text.size() > limits.mostBytes)
        throw ApiError(400, place.Text() + " is too long: " + std::to_string(text.size()) + " bytes",
                       "at most " + std::to_string(limits.mostBytes) + " bytes");
    *static_cast<std::string*>(value) = text;
}

bool TextType::IsEmpty(const void* value) const {
    return static_cast<const std::string*>(value)->empty();
}

std::string TextType::KeyOf(const void* value) const {
    return *static_cast<const std::string*>(value);
}

void TimeType::Write(std::string& out, const void* value) const {
    using std::chrono::floor;
    const auto time = floor<std::chrono::milliseconds>(*static_cast<const TimePoint*>(value));
    const auto whole = floor<std::chrono::seconds>(time);
    std::string text = UtcText(whole);
    text.pop_back(); // its Z
    // Three digits, whatever they are.
    out.append("\"")
        .append(text)
        .append(".")
        .append(std::to_string(1000 + (time - whole).count()).substr(1))
        .append("Z\"");
}

void NumberType::Read(const Json& json, const Place& place, const Limits& limits, void* value) const {
    const std::int64_t least = std::max(m_least, limits.least);
    const std::int64_t most = std::min(m_most, limits.most);
    const std::string right = "an integer from " + std::to_string(least) + " to " + std::to_string(most);
    if (!json.is_number_integer())
        throw Wrong(place, json, "no integer", right);
    const bool isHuge = json.is_number_unsigned() &&
                        json.get<std::uint64_t>() > std::uint64_t{std::numeric_limits<std::int64_t>::max()};
    if (isHuge || json.get<std::int64_t>() < least || json.get<std::int64_t>() > most)
        throw Wrong(place, json, "out of range", right);
    Set(value, json.get<std::int64_t>());
}

void ListType::Write(std::string& out, const void* list) const {
    const Type& entries = Entries();
    const std::size_t size = Size(list);
    out += '[';
    for (std::size_t index = 0; index < size; ++index) {
        if (index != 0)
            out += ',';
        entries.Write(out, At(list, index));
    }
    out += ']';
}

void ListType::Read(const Json& json, const Place& place, const Limits& limits, void* list) const {
    const Type& entries = Entries();
    const std::string noun(entries.Noun());
    if (!json.is_array())
        throw ApiError(400, place.Text() + " is no list", "a list of " + noun + "s");
    if (json.size() > limits.mostEntries)
        throw ApiError(400, place.Text() + " is too long",
                       "at most " + std::to_string(limits.mostEntries) + " entries");
    std::set<std::string> keys;
    for (std::size_t index = 0; index < json.size(); ++index) {
        const Place entry(place, index);
        void* const added = Add(list);
        entries.Read(json[index], entry, limits, added);
        if (!limits.isEachOnce || keys.insert(entries.KeyOf(added)).second)
            continue;
        const std::string_view key = entries.KeyName();
        throw ApiError(400, (key.empty() ? entry : Place(entry, key)).Text() + " stands in the list already",
                       "each " + (key.empty() ? noun : std::string(key)) + " once");
    }
}

void MaybeType::Write(std::string& out, const void* value) const {
    if (const void* const inner = Get(value); inner != nullptr)
        Present().Write(out, inner);
    else
        out += "null";
}

void MaybeType::Read(const Json& json, const Place& place, const Limits& limits, void* value) const {
    Present().Read(json, place, limits, Fill(value));
}

} // namespace controller::fields
