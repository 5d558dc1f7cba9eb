#include "announce/definitions/Arguments.h"

#include "announce/basics/Numbers.h"

std::string Arguments::Text(const std::string& key) const {
    return Find(key).value_or("");
}

std::optional<std::string> Arguments::Find(const std::string& key) const {
    const auto place = m_values.find(key);
    if (place == m_values.end() || place->second.empty())
        return std::nullopt;
    return place->second.front();
}

std::vector<std::string> Arguments::All(const std::string& key) const {
    const auto place = m_values.find(key);
    return place != m_values.end() ? place->second : std::vector<std::string>{};
}

long Arguments::Number(const std::string& key, long smallest, long largest, long otherwise) const {
    const auto text = Find(key);
    return text ? ReadNumber("--" + key, *text, smallest, largest) : otherwise;
}
