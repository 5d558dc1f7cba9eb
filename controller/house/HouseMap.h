#pragma once

#include "controller/house/HouseFile.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <yaml-cpp/yaml.h>

namespace controller {

/// One mapping of the house file: gives its values by key, and notes every mistake on the way. Each value
/// that is taken counts as known; what is left in the end is unknown.
class HouseMap {
public:
    /// `path` is the mapping's own key; empty for the file's root. `mistakes` is borrowed for life.
    HouseMap(const YAML::Node& node, std::string path, std::vector<HouseMistake>& mistakes);

    /// The text of a key; `fallback` when it is missing; a mistake when it is missing without a fallback,
    /// empty, too long, or no text.
    std::string Text(const std::string& key, const std::optional<std::string>& fallback = std::nullopt);

    /// As `Text`, but may be empty.
    std::string TextOrEmpty(const std::string& key);

    /// The whole number of a key.
    std::uint32_t Number(const std::string& key,
                         std::uint32_t least,
                         std::uint32_t most,
                         std::optional<std::uint32_t> fallback = {});

    /// Hands each entry of a list of mappings over; a missing list has none.
    void EachEntry(const std::string& key, const std::function<void(HouseMap&)>& take);

    /// The node of a key, invalid when it is missing; for what the others cannot read.
    YAML::Node Node(const std::string& key);

    /// Notes a mistake about a key of this mapping.
    void Mistake(const std::string& key, const std::string& text);

    /// Notes every key that nobody has taken.
    void RefuseUnknown();

    [[nodiscard]] const std::string& Path() const noexcept { return m_path; }
    /// The line of a key; the mapping's own when it is missing.
    [[nodiscard]] int LineOf(const std::string& key) const;

private:
    struct Value {
        YAML::Node node;
        int line = 0;
        bool isTaken = false;
    };

    [[nodiscard]] std::string KeyPath(const std::string& key) const;
    std::optional<std::string> Scalar(const std::string& key);

    std::string m_path;
    int m_line = 0;
    std::vector<HouseMistake>& m_mistakes;
    std::map<std::string, Value> m_values;
    std::vector<std::string> m_known;
};

} // namespace controller
