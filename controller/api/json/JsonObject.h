#pragma once

#include <nlohmann/json.hpp>

#include <cstdint>
#include <limits>
#include <optional>
#include <set>
#include <string>

namespace controller {

/// Parses a body. Throws `ApiError` with 400 for what is no JSON, or nests deeper than 32.
[[nodiscard]] nlohmann::json ParseJson(const std::string& text);

/// Reads the members of an object that came from outside. Every operation throws `ApiError` with 400, which
/// names the member by its path, for one of another type or out of range; so does `RefuseOthers` for members
/// that nobody read.
class JsonObject {
public:
    /// `value` is borrowed for life; `path` is how messages name it: empty for the body itself.
    JsonObject(const nlohmann::json& value, std::string path);

    [[nodiscard]] bool Has(const char* name);
    [[nodiscard]] std::string Text(const char* name, std::size_t maxBytes);
    [[nodiscard]] std::string Text(const char* name, std::size_t maxBytes, const std::string& missing);
    [[nodiscard]] std::int64_t Integer(const char* name, std::int64_t least, std::int64_t most);
    [[nodiscard]] std::int64_t
    Integer(const char* name, std::int64_t least, std::int64_t most, std::int64_t missing);
    [[nodiscard]] std::uint32_t Id(const char* name);
    [[nodiscard]] std::uint32_t Number(const char* name, std::uint32_t missing);
    [[nodiscard]] bool Bool(const char* name, bool missing);

    /// The member, or null when it is missing or the JSON null.
    [[nodiscard]] const nlohmann::json* Find(const char* name);

    /// "video.delay_ms"
    [[nodiscard]] std::string PathOf(const std::string& name) const;

    void RefuseOthers() const;

private:
    [[nodiscard]] const nlohmann::json& Required(const char* name);

    const nlohmann::json& m_value;
    const std::string m_path;
    std::set<std::string> m_read;
};

} // namespace controller
