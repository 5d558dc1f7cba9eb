#pragma once

#include <nlohmann/json_fwd.hpp>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace controller::fields {

using Json = nlohmann::json;
using Schema = nlohmann::ordered_json;

/// Where a value stands in what came: "video.variable", "rooms[1].id". Outer places are borrowed for life.
class Place {
public:
    /// The whole; an empty name means the body itself.
    explicit Place(std::string_view name) : m_name(name) {}
    Place(const Place& outer, std::string_view name) : m_outer(&outer), m_name(name) {}
    Place(const Place& outer, std::size_t index) : m_outer(&outer), m_index(index) {}

    [[nodiscard]] std::string Text() const;

private:
    static constexpr std::size_t kNoIndex = std::numeric_limits<std::size_t>::max();

    const Place* m_outer = nullptr;
    std::string_view m_name;
    std::size_t m_index = kNoIndex;
};

/// What a value may be; of a list, what each of its entries may be, too.
struct Limits {
    std::int64_t least = std::numeric_limits<std::int64_t>::min();
    std::int64_t most = std::numeric_limits<std::int64_t>::max();
    std::size_t mostBytes = std::numeric_limits<std::size_t>::max();
    std::size_t mostEntries = std::numeric_limits<std::size_t>::max();
    bool isEachOnce = false;
    std::vector<const char*> oneOf = {}; ///< the texts that it may be, where these are few
};

class Object;

/// The schemas that are described so far, by name. Those of what is taken differ from those of what is given:
/// much may be left out.
struct Components {
    Schema& schemas;
    bool isTaken = false;
    std::map<std::pair<const Object*, bool>, std::string> names = {};
};

/// How values of one C++ type are written, read and described. Some are only given, in replies, and some only
/// taken, in bodies; what they cannot do throws `std::logic_error`.
class Type {
public:
    Type(const Type&) = delete;
    Type& operator=(const Type&) = delete;

    virtual void Write(std::string& out, const void* value) const;

    /// Throws `ApiError` with 400, which names the place, for what is of another kind or out of the limits.
    virtual void Read(const Json& json, const Place& place, const Limits& limits, void* value) const;

    virtual void Describe(Schema& schema, const Limits& limits, Components& components) const = 0;

    /// The type of one that is never nothing.
    [[nodiscard]] virtual const Type& Present() const { return *this; }

    /// Whether it is an empty text or list, or nothing.
    [[nodiscard]] virtual bool IsEmpty(const void* /*value*/) const { return false; }

    /// What an entry of a list is told apart by, and the member that holds it (empty: it is the entry
    /// itself).
    [[nodiscard]] virtual std::string KeyOf(const void* /*value*/) const { return ""; }
    [[nodiscard]] virtual std::string_view KeyName() const { return ""; }

    /// One of them, in words.
    [[nodiscard]] virtual std::string_view Noun() const { return "value"; }

protected:
    Type() = default;
    ~Type() = default;
};

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
