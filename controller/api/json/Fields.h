#pragma once

#include "controller/api/json/FormOf.h"

/// What the API gives and takes, each type as one table of its members: name, where it stands in the
/// structure, limits, words. From the table come writing, reading, the messages of what is wrong, and the
/// schema. A member that is left out is what the structure begins with.
///
///     Object TableOf(For<Volume>) {
///         return {"Volume", {Member<&Volume::volume>("volume").Between(0, 100).Required()}};
///     }
namespace controller::fields {

/// What is written of an empty text or list, or of nothing.
enum class WhenEmpty { Itself, Null, LeftOut };

/// One row of a table.
struct Field {
    const char* name;
    const char* words;
    const Type* type;
    const void* (*get)(const void* object);
    std::shared_ptr<const void> (*start)() = nullptr; ///< an object as it begins, of one that may be taken
    std::shared_ptr<const Type> own = nullptr;        ///< the type, when no other row has it
    Limits limits = {};
    WhenEmpty whenEmpty = WhenEmpty::Itself;
    bool isRequired = false;
    const char* right = "";

    [[nodiscard]] Field Between(std::int64_t least, std::int64_t most) const {
        return With(&Limits::least, least).With(&Limits::most, most);
    }
    /// From 1 to the largest id.
    [[nodiscard]] Field AsId() const { return Between(1, std::numeric_limits<std::uint32_t>::max()); }
    [[nodiscard]] Field AtMostBytes(std::size_t bytes) const { return With(&Limits::mostBytes, bytes); }
    [[nodiscard]] Field AtMostEntries(std::size_t most) const { return With(&Limits::mostEntries, most); }
    /// Two entries of a list that are the same text, or have the same "id", are refused.
    [[nodiscard]] Field EachOnce() const { return With(&Limits::isEachOnce, true); }
    /// Says which texts are given.
    [[nodiscard]] Field OneOf(const std::vector<const char*>& texts) const {
        return With(&Limits::oneOf, texts);
    }
    /// `wanted` is what messages say that it would be, where it is missing.
    [[nodiscard]] Field Required(const char* wanted = "") const {
        return With(&Field::isRequired, true).With(&Field::right, wanted);
    }
    [[nodiscard]] Field NullWhenEmpty() const { return With(&Field::whenEmpty, WhenEmpty::Null); }
    [[nodiscard]] Field LeftOutWhenEmpty() const { return With(&Field::whenEmpty, WhenEmpty::LeftOut); }

private:
    template <class Owner, class Value>
    Field With(Value Owner::*member, const Value& value) const {
        Field changed = *this;
        if constexpr (std::is_same_v<Owner, Limits>)
            changed.limits.*member = value;
        else
            changed.*member = value;
        return changed;
    }
};

/// The table of a structure.
class Object final : public Type {
public:
    /// Without a name its schema stands where it is used.
    Object(std::string name, std::vector<Field> rows);

    void Write(std::string& out, const void* object) const override;
    void Read(const Json& json, const Place& place, const Limits& limits, void* object) const override;
    void Describe(Schema& schema, const Limits& limits, Components& components) const override;
    [[nodiscard]] std::string KeyOf(const void* object) const override;
    [[nodiscard]] std::string_view KeyName() const override { return "id"; }
    [[nodiscard]] std::string_view Noun() const override { return "object"; }

private:
    void RefuseOthers(const Json& json, const Place& place) const;
    [[nodiscard]] Schema DescribeMember(const Field& row, Components& components) const;
    void DescribeMembers(Schema& schema, Components& components) const;

    const std::string m_name;
    const std::vector<Field> m_rows;
    std::vector<std::string> m_starts; ///< `,"name":` of each
};

template <class Owner, class Value>
Owner OwnerOf(Value Owner::*);
template <class Owner, class Value>
Owner OwnerOf(Value (*)(const Owner&));

/// A member of the structure, or, by several pointers, a member of its member.
template <auto First, auto... More>
Field Member(const char* name, const char* words = "") {
    using Owner = decltype(OwnerOf(First));
    using Value = std::decay_t<decltype(((std::declval<Owner&>().*First).*....*More))>;
    return {name, words, &TypeOf<Value>(),
            [](const void* object) -> const void* {
                return &((static_cast<const Owner*>(object)->*First).*....*More);
            },
            []() -> std::shared_ptr<const void> {
                return std::make_shared<const Owner>();
            }};
}

/// What a type makes of the structure itself.
[[nodiscard]] Field Itself(const char* name, std::shared_ptr<const Type> type, const char* words = "");

/// One text, always the same.
[[nodiscard]] inline Field Constant(const char* name, const char* text) {
    return Itself(name, std::make_shared<const ConstantType>(text));
}

/// What a function makes of the structure; only written.
template <auto Function>
Field Made(const char* name, const char* words = "") {
    using Owner = decltype(OwnerOf(Function));
    return Itself(name, std::make_shared<const MadeOf<Function, Owner>>(), words);
}

template <class Value>
void Append(std::string& out, const Value& value) {
    TypeOf<Value>().Write(out, &value);
}

template <class Value>
[[nodiscard]] std::string ToText(const Value& value) {
    std::string text;
    Append(text, value);
    return text;
}

/// Throws `ApiError` with 400, which names the member, for what is no such value. `path` is how messages name
/// the whole; empty: as the body.
template <class Value>
[[nodiscard]] Value Read(const Json& json, std::string_view path = {}) {
    Value value;
    TypeOf<Value>().Read(json, Place(path), {}, &value);
    return value;
}

} // namespace controller::fields
