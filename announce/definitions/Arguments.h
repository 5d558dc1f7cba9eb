#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

/// What the command line gives, by the names of the definitions.
class Arguments {
public:
    using Values = std::map<std::string, std::vector<std::string>>;

    Arguments() = default;
    explicit Arguments(Values values) : m_values(std::move(values)) {}

    [[nodiscard]] bool Has(const std::string& key) const { return m_values.count(key) != 0; }
    /// The value, or the first of them; empty when it is not given.
    [[nodiscard]] std::string Text(const std::string& key) const;
    [[nodiscard]] std::optional<std::string> Find(const std::string& key) const;
    [[nodiscard]] std::vector<std::string> All(const std::string& key) const;

    /// A whole number. Throws Failure (Usage) that says what would be right.
    [[nodiscard]] long Number(const std::string& key, long smallest, long largest, long otherwise) const;

private:
    Values m_values;
};
