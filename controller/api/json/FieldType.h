#pragma once

#include "controller/api/json/Type.h"

namespace controller::fields {

/// One text, always the same.
class ConstantType final : public Type {
public:
    explicit ConstantType(const char* text) : m_text(text) {}
    void Write(std::string& out, const void* value) const override;
    void Describe(Schema& schema, const Limits& limits, Components& components) const override;

private:
    const char* const m_text;
};

class TruthType final : public Type {
public:
    void Write(std::string& out, const void* value) const override;
    void Read(const Json& json, const Place& place, const Limits& limits, void* value) const override;
    void Describe(Schema& schema, const Limits& limits, Components& components) const override;
    /// False is.
    [[nodiscard]] bool IsEmpty(const void* value) const override;
};

/// A `std::string`. Bytes that are no UTF-8 are replaced where it is written.
class TextType final : public Type {
public:
    void Write(std::string& out, const void* value) const override;
    void Read(const Json& json, const Place& place, const Limits& limits, void* value) const override;
    void Describe(Schema& schema, const Limits& limits, Components& components) const override;
    [[nodiscard]] bool IsEmpty(const void* value) const override;
    [[nodiscard]] std::string KeyOf(const void* value) const override;
    [[nodiscard]] std::string_view Noun() const override { return "text"; }
};

/// A `std::chrono::system_clock::time_point`.
class TimeType final : public Type {
public:
    void Write(std::string& out, const void* value) const override;
    void Describe(Schema& schema, const Limits& limits, Components& components) const override;
};

/// Integers, whatever their width is.
class NumberType : public Type {
public:
    void Read(const Json& json, const Place& place, const Limits& limits, void* value) const final;
    void Describe(Schema& schema, const Limits& limits, Components& components) const final;
    [[nodiscard]] std::string_view Noun() const final { return "integer"; }

protected:
    NumberType(std::int64_t least, std::int64_t most) : m_least(least), m_most(most) {}
    ~NumberType() = default;
    virtual void Set(void* value, std::int64_t number) const = 0;

private:
    const std::int64_t m_least;
    const std::int64_t m_most;
};

/// Lists, whatever their entries are.
class ListType : public Type {
public:
    void Write(std::string& out, const void* list) const final;
    void Read(const Json& json, const Place& place, const Limits& limits, void* list) const final;
    void Describe(Schema& schema, const Limits& limits, Components& components) const final;
    [[nodiscard]] bool IsEmpty(const void* list) const final { return Size(list) == 0; }

protected:
    ~ListType() = default;
    [[nodiscard]] virtual const Type& Entries() const = 0;
    [[nodiscard]] virtual std::size_t Size(const void* list) const = 0;
    [[nodiscard]] virtual const void* At(const void* list, std::size_t index) const = 0;
    /// Adds an entry that holds nothing yet.
    [[nodiscard]] virtual void* Add(void* list) const = 0;
};

/// Optionals, whatever they hold, which is of the present type.
class MaybeType : public Type {
public:
    void Write(std::string& out, const void* value) const final;
    void Read(const Json& json, const Place& place, const Limits& limits, void* value) const final;
    void Describe(Schema& schema, const Limits& limits, Components& components) const final;
    [[nodiscard]] bool IsEmpty(const void* value) const final { return Get(value) == nullptr; }

protected:
    ~MaybeType() = default;
    /// What it holds; null for nothing.
    [[nodiscard]] virtual const void* Get(const void* value) const = 0;
    /// Makes it hold something.
    [[nodiscard]] virtual void* Fill(void* value) const = 0;
};

} // namespace controller::fields
