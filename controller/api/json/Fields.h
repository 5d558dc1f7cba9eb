#pragma once

#include "controller/api/json/TypeOf.h"

/// What the API gives and takes, each type as one table of its members: name, where it stands in the
/// structure, limits, words. From the table come writing, reading, the messages of what is wrong, and the
/// schema. A member that is left out is what the structure begins with.
///
///     const Object& TableOf(For<Volume>) {
///         static const Object kTable("Volume", Volume(),
///                                    {Member<&Volume::volume>("volume").Between(0, 100).Required()});
///         return kTable;
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
    Limits limits = {};
    WhenEmpty whenEmpty = WhenEmpty::Itself;
    bool isRequired = false;
    const char* right = "";

    [[nodiscard]] Field Between(std::int64_t least, std::int64_t most) const;
    /// From 1 to the largest id.
    [[nodiscard]] Field AsId() const;
    [[nodiscard]] Field AtMostBytes(std::size_t bytes) const;
    [[nodiscard]] Field AtMostEntries(std::size_t entries) const;
    /// Two entries of a list that are the same text, or have the same "id", are refused.
    [[nodiscard]] Field EachOnce() const;
    /// Says which texts are given.
    [[nodiscard]] Field OneOf(std::vector<const char*> texts) const;
    /// `wanted` is what messages say that it would be, where it is missing.
    [[nodiscard]] Field Required(const char* wanted = "") const;
    [[nodiscard]] Field NullWhenEmpty() const;
    [[nodiscard]] Field LeftOutWhenEmpty() const;
};

/// The table of a structure.
class Object final : public Type {
public:
    /// `first` is what an object begins with; no name: its schema stands where it is used.
    template <class First>
    Object(std::string name, First first, std::vector<Field> rows)
        : m_name(std::move(name))
        , m_first(std::make_shared<const First>(std::move(first)))
        , m_rows(std::move(rows)) {
        NameStarts();
    }

    void Write(std::string& out, const void* object) const override;
    void Read(const Json& json, const Place& place, const Limits& limits, void* object) const override;
    void Describe(Schema& schema, const Limits& limits, Components& components) const override;
    [[nodiscard]] std::string KeyOf(const void* object) const override;
    [[nodiscard]] std::string_view KeyName() const override { return "id"; }
    [[nodiscard]] std::string_view Noun() const override { return "object"; }

private:
    void NameStarts();
    void RefuseOthers(const Json& json, const Place& place) const;
    [[nodiscard]] Schema DescribeMember(const Field& row, Components& components) const;
    void DescribeMembers(Schema& schema, Components& components) const;

    const std::string m_name;
    const std::shared_ptr<const void> m_first;
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
    return {name, words, &TypeOf<Value>(), [](const void* object) -> const void* {
                return &((static_cast<const Owner*>(object)->*First).*....*More);
            }};
}

/// What another table, or a type like `ConstantType`, makes of the same structure; the type is borrowed.
[[nodiscard]] inline Field Itself(const char* name, const Type& type, const char* words = "") {
    return {name, words, &type, [](const void* object) {
                return object;
            }};
}

/// What a function makes of the structure; only written.
template <auto Function>
Field Made(const char* name, const char* words = "") {
    using Owner = decltype(OwnerOf(Function));
    static const MadeOf<Function, Owner> kType;
    return Itself(name, kType, words);
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
