#pragma once

#include "controller/api/json/FieldType.h"
#include "rehearsal/JsonText.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <optional>
#include <type_traits>

namespace controller::fields {

/// Chooses among the functions `Object TableOf(For<Value>)`, which stand in the type's own namespace.
template <class Value>
struct For {};

/// The table of a type that is made for the API, and has it itself.
template <class Value>
auto TableOf(For<Value> /*type*/) -> decltype(Value::Table()) {
    return Value::Table();
}

/// How values of this type are written, read and described.
template <class Value>
const Type& TypeOf();

template <class Number>
class NumberOf final : public NumberType {
    using Range = std::numeric_limits<Number>;
    static constexpr auto kMost = std::uint64_t{std::numeric_limits<std::int64_t>::max()};

public:
    NumberOf()
        : NumberType(Range::min(),
                     static_cast<std::int64_t>(std::min(kMost, static_cast<std::uint64_t>(Range::max())))) {}
    void Write(std::string& out, const void* value) const override {
        AppendNumber(out, *static_cast<const Number*>(value));
    }
    [[nodiscard]] std::string KeyOf(const void* value) const override {
        return std::to_string(*static_cast<const Number*>(value));
    }

private:
    void Set(void* value, std::int64_t number) const override {
        *static_cast<Number*>(value) = static_cast<Number>(number);
    }
};

template <class Entry>
class ListOf final : public ListType {
    using List = std::vector<Entry>;
    const Type& Entries() const override { return TypeOf<Entry>(); }
    std::size_t Size(const void* list) const override { return static_cast<const List*>(list)->size(); }
    const void* At(const void* list, std::size_t index) const override {
        return &(*static_cast<const List*>(list))[index];
    }
    void* Add(void* list) const override { return &static_cast<List*>(list)->emplace_back(); }
};

template <class Value>
class MaybeOf final : public MaybeType {
    using Maybe = std::optional<Value>;
    const Type& Present() const override { return TypeOf<Value>(); }
    const void* Get(const void* value) const override {
        const auto& maybe = *static_cast<const Maybe*>(value);
        return maybe ? &*maybe : nullptr;
    }
    void* Fill(void* value) const override {
        auto& maybe = *static_cast<Maybe*>(value);
        maybe = Value();
        return &*maybe;
    }
};

/// Which of these a type is.
template <class Value>
struct KindOf {
    static const Type& Get() {
        static auto&& table = TableOf(For<Value>{});
        return table;
    }
};
template <class Kind>
struct Shared {
    static const Type& Get() {
        static const Kind kType;
        return kType;
    }
};
template <>
struct KindOf<bool> : Shared<TruthType> {};
template <>
struct KindOf<std::string> : Shared<TextType> {};
template <>
struct KindOf<std::chrono::system_clock::time_point> : Shared<TimeType> {};
template <>
struct KindOf<std::int32_t> : Shared<NumberOf<std::int32_t>> {};
template <>
struct KindOf<std::uint32_t> : Shared<NumberOf<std::uint32_t>> {};
template <>
struct KindOf<std::int64_t> : Shared<NumberOf<std::int64_t>> {};
template <>
struct KindOf<std::uint64_t> : Shared<NumberOf<std::uint64_t>> {};
template <class Entry>
struct KindOf<std::vector<Entry>> : Shared<ListOf<Entry>> {};
template <class Value>
struct KindOf<std::optional<Value>> : Shared<MaybeOf<Value>> {};

template <class Value>
const Type& TypeOf() {
    return KindOf<Value>::Get();
}

} // namespace controller::fields
