#pragma once

#include "controller/api/json/TypeOf.h"

#include <memory>
#include <string>

namespace controller::fields {

/// Another form of what has a type: described like it, and only given.
template <class Value>
class FormOf : public Type {
public:
    void Describe(Schema& schema, const Limits& limits, Components& components) const final {
        TypeOf<Value>().Describe(schema, limits, components);
    }
    [[nodiscard]] const Type& Present() const final { return TypeOf<Value>().Present(); }

protected:
    ~FormOf() = default;
};

template <auto Function, class Owner>
using ValueOf = std::decay_t<decltype(Function(std::declval<const Owner&>()))>;

/// Made where it is written.
template <auto Function, class Owner>
class MadeOf final : public FormOf<ValueOf<Function, Owner>> {
    using Value = ValueOf<Function, Owner>;
    static Value Make(const void* owner) { return Function(*static_cast<const Owner*>(owner)); }

public:
    void Write(std::string& out, const void* owner) const override {
        const Value value = Make(owner);
        TypeOf<Value>().Write(out, &value);
    }
    [[nodiscard]] bool IsEmpty(const void* owner) const override {
        const Value value = Make(owner);
        return TypeOf<Value>().IsEmpty(&value);
    }
};

/// What a shared pointer leads to. Where it may be null, the member is left out or null when it is empty.
template <class Value>
class SharedOf final : public FormOf<Value> {
    static const Value* Get(const void* pointer) {
        return static_cast<const std::shared_ptr<const Value>*>(pointer)->get();
    }

public:
    void Write(std::string& out, const void* pointer) const override {
        TypeOf<Value>().Write(out, Get(pointer));
    }
    [[nodiscard]] bool IsEmpty(const void* pointer) const override { return Get(pointer) == nullptr; }
};

/// A value that has been written already, elsewhere or earlier.
template <class Value>
struct Written {
    std::string text;
};
template <class Value>
class WrittenOf final : public FormOf<Value> {
    void Write(std::string& out, const void* value) const override {
        out += static_cast<const Written<Value>*>(value)->text;
    }
};

template <class Value>
struct KindOf<Written<Value>> : Shared<WrittenOf<Value>> {};
template <class Value>
struct KindOf<std::shared_ptr<const Value>> : Shared<SharedOf<Value>> {};

} // namespace controller::fields
