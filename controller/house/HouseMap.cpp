#include "controller/house/HouseMap.h"

#include "controller/driver/Text.h"

#include <algorithm>
#include <utility>

namespace controller {

namespace {

constexpr std::size_t kMaxText = 1000;
constexpr std::size_t kMaxEntries = 10'000;

int NodeLine(const YAML::Node& node) {
    return node.Mark().line + 1;
}

std::string Join(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? "" : ", ") + word;
    return text;
}

bool HasControlCharacter(const std::string& text) {
    return OneLine(text) != text;
}

} // namespace

HouseMap::HouseMap(const YAML::Node& node, std::string path, std::vector<HouseMistake>& mistakes)
    : m_path(std::move(path))
    , m_line(NodeLine(node))
    , m_mistakes(mistakes) {
    if (!node.IsMap()) {
        m_mistakes.push_back({m_line, m_path, "must be keys with values, each as `key: value`"});
        return;
    }
    for (const auto& pair : node) {
        const int line = NodeLine(pair.first);
        if (!pair.first.IsScalar()) {
            m_mistakes.push_back({line, m_path, "a key must be a plain word"});
            continue;
        }
        const auto [place, isNew] = m_values.emplace(pair.first.Scalar(), Value{pair.second, line, false});
        if (!isNew)
            m_mistakes.push_back(
                {line, KeyPath(place->first),
                 "stands twice, first in line " + std::to_string(place->second.line) + "; keep one of them"});
    }
}

std::string HouseMap::KeyPath(const std::string& key) const {
    return m_path.empty() ? key : m_path + "." + key;
}

int HouseMap::LineOf(const std::string& key) const {
    const auto place = m_values.find(key);
    return place != m_values.end() ? place->second.line : m_line;
}

void HouseMap::Mistake(const std::string& key, const std::string& text) {
    m_mistakes.push_back({LineOf(key), KeyPath(key), text});
}

YAML::Node HouseMap::Node(const std::string& key) {
    m_known.push_back(key);
    const auto place = m_values.find(key);
    if (place == m_values.end())
        return YAML::Node(YAML::NodeType::Undefined);
    place->second.isTaken = true;
    return place->second.node;
}

std::optional<std::string> HouseMap::Scalar(const std::string& key) {
    const YAML::Node node = Node(key);
    if (!node.IsDefined())
        return std::nullopt;
    if (node.IsNull())
        return std::string();
    if (!node.IsScalar()) {
        Mistake(key, "must be one value, as `" + key + ": value`");
        return std::nullopt;
    }
    const std::string& text = node.Scalar();
    if (text.size() > kMaxText || HasControlCharacter(text)) {
        Mistake(key, "must be one line of at most " + std::to_string(kMaxText) + " characters");
        return std::nullopt;
    }
    return text;
}

std::string HouseMap::Text(const std::string& key, const std::optional<std::string>& fallback) {
    const std::size_t before = m_mistakes.size();
    const std::optional<std::string> text = Scalar(key);
    if (m_mistakes.size() != before)
        return "";
    if (!text && fallback)
        return *fallback;
    if (!text)
        Mistake(key, "is missing; write `" + key + ": …`");
    else if (text->empty())
        Mistake(key, "must not be empty");
    return text.value_or("");
}

std::string HouseMap::TextOrEmpty(const std::string& key) {
    return Scalar(key).value_or("");
}

std::uint32_t HouseMap::Number(const std::string& key,
                               std::uint32_t least,
                               std::uint32_t most,
                               std::optional<std::uint32_t> fallback) {
    const std::size_t before = m_mistakes.size();
    const std::optional<std::string> text = Scalar(key);
    if (m_mistakes.size() != before)
        return least;
    if (!text && fallback)
        return *fallback;
    const std::string range = "a whole number from " + std::to_string(least) + " to " + std::to_string(most);
    if (!text) {
        Mistake(key, "is missing; it is " + range);
        return least;
    }
    const auto number = ReadNumber(*text, least, most);
    if (!number)
        Mistake(key, "\"" + *text + "\" is not " + range);
    return number.value_or(least);
}

void HouseMap::EachEntry(const std::string& key, const std::function<void(HouseMap&)>& take) {
    const YAML::Node list = Node(key);
    if (!list.IsDefined() || list.IsNull())
        return;
    if (!list.IsSequence()) {
        Mistake(key, "must be a list, each entry behind a `- `");
        return;
    }
    if (list.size() > kMaxEntries) {
        Mistake(key, "has " + std::to_string(list.size()) + " entries; " + std::to_string(kMaxEntries) +
                         " at most");
        return;
    }
    for (std::size_t index = 0; index < list.size(); ++index) {
        HouseMap entry(list[index], KeyPath(key) + "[" + std::to_string(index + 1) + "]", m_mistakes);
        if (!list[index].IsMap())
            continue;
        take(entry);
        entry.RefuseUnknown();
    }
}

void HouseMap::RefuseUnknown() {
    for (const auto& [key, value] : m_values)
        if (!value.isTaken)
            m_mistakes.push_back(
                {value.line, KeyPath(key), "is not known; the keys here are " + Join(m_known)});
}

} // namespace controller
