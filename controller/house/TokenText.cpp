#include "controller/house/TokenText.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>
#include <vector>

namespace controller::token_text {
namespace {

using Lines = std::vector<std::string>;

Lines Split(const std::string& text) {
    Lines lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

std::string Join(const Lines& lines) {
    std::string text;
    for (const std::string& line : lines)
        text += line + "\n";
    return text;
}

std::size_t IndentOf(const std::string& line) {
    return std::min(line.find_first_not_of(' '), line.size());
}

/// Blank, or a comment and nothing else.
bool IsEmpty(const std::string& line) {
    const std::size_t start = line.find_first_not_of(" \t\r");
    return start == std::string::npos || line[start] == '#';
}

/// The line with the key "tokens" of the house itself.
Lines::iterator FindKey(Lines& lines) {
    return std::find_if(lines.begin(), lines.end(),
                        [](const std::string& line) { return line.compare(0, 7, "tokens:") == 0; });
}

std::string ValueOf(const std::string& line) {
    std::string value = line.substr(line.find(':') + 1);
    value = value.substr(0, value.find('#'));
    const std::size_t start = value.find_first_not_of(" \t\r");
    const std::size_t end = value.find_last_not_of(" \t\r");
    return start == std::string::npos ? "" : value.substr(start, end - start + 1);
}

Lines Entry(const Token& token, const std::string& indent) {
    std::string rights;
    for (const std::string& right : token.rights.Texts())
        rights += (rights.empty() ? "\"" : ", \"") + right + "\"";
    return {indent + "- name: \"" + token.name + "\"", indent + "  hash: \"" + token.hash + "\"",
            indent + "  rights: [" + rights + "]"};
}

/// How far the list's entries stand to the right.
std::string IndentBehind(const Lines& lines, Lines::const_iterator key) {
    const auto first =
        std::find_if(std::next(key), lines.end(), [](const auto& line) { return !IsEmpty(line); });
    const bool isEntry = first != lines.end() && first->find('-') == IndentOf(*first);
    return isEntry ? first->substr(0, IndentOf(*first)) : "  ";
}

bool HasEntries(const Lines& lines, Lines::const_iterator key) {
    const auto first =
        std::find_if(std::next(key), lines.end(), [](const auto& line) { return !IsEmpty(line); });
    return first != lines.end() && (*first)[IndentOf(*first)] == '-';
}

} // namespace

std::string Add(const std::string& house, const Token& token) {
    Lines lines = Split(house);
    auto key = FindKey(lines);
    if (key == lines.end()) {
        lines.emplace_back();
        key = lines.insert(lines.end(), "tokens:");
    }
    const std::string value = ValueOf(*key);
    const std::string indent = value.empty() ? IndentBehind(lines, key) : "  ";
    const Lines entry = Entry(token, indent);
    if (!value.empty() && value != "[]")
        throw std::runtime_error(
            "tokens is written as one line; write it as a list, an entry a line, and add\n" + Join(entry));
    if (value == "[]")
        *key = "tokens:";
    lines.insert(std::next(key), entry.begin(), entry.end());
    return Join(lines);
}

std::string Remove(const std::string& house, const std::string& name) {
    Lines lines = Split(house);
    const auto key = FindKey(lines);
    auto place = key != lines.end() ? std::next(key) : key;
    while (place != lines.end()) {
        const std::size_t indent = IndentOf(*place);
        const bool isEntry = !IsEmpty(*place) && (*place)[indent] == '-';
        if (!isEntry && !IsEmpty(*place) && indent == 0)
            break; // the house's next key
        auto end = std::next(place);
        if (!isEntry) {
            place = end;
            continue;
        }
        while (end != lines.end() && !IsEmpty(*end) && IndentOf(*end) > indent)
            ++end;
        const std::string named = "name: " + name;
        const std::string quoted = "name: \"" + name + "\"";
        const bool isMeant = std::any_of(place, end, [&](std::string line) {
            line.erase(0, line.find_first_not_of(" -"));
            line.erase(std::min(line.find_last_not_of(" \t\r") + 1, line.size()));
            return line == named || line == quoted;
        });
        if (isMeant) {
            lines.erase(place, end);
            const auto list = FindKey(lines);
            if (!HasEntries(lines, list))
                *list = "tokens: []"; // a key without entries is no list
            return Join(lines);
        }
        place = end;
    }
    throw std::runtime_error("the house file has no token " + name +
                             ", or it is written in another way than "
                             "`token add` writes it; take it out by hand then");
}

} // namespace controller::token_text
