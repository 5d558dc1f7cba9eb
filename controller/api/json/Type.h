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

} // namespace controller::fields
