#include "controller/speech/SpeechText.h"

#include <algorithm>
#include <functional>
#include <stdexcept>

namespace controller::speech_text {

namespace {

/// What `{` and `}` hold becomes what `value` makes of it. A brace without its other one is a brace.
std::string Replaced(const std::string& text, const std::function<std::string(const std::string&)>& value) {
    std::string replaced;
    std::size_t done = 0;
    while (true) {
        const std::size_t begin = text.find('{', done);
        const std::size_t end = begin != std::string::npos ? text.find('}', begin) : begin;
        if (end == std::string::npos)
            return replaced + text.substr(done);
        replaced += text.substr(done, begin - done) + value(text.substr(begin + 1, end - begin - 1));
        done = end + 1;
    }
}

std::string NamesOf(const std::map<std::string, std::string>& values) {
    std::string names;
    for (const auto& [name, value] : values)
        names += (names.empty() ? "{" : ", {") + name + "}";
    return names.empty() ? "the house has none" : "the house has " + names;
}

} // namespace

std::vector<std::string> VariablesIn(const std::string& text) {
    std::vector<std::string> names;
    (void)Replaced(text, [&names](const std::string& name) {
        if (std::find(names.begin(), names.end(), name) == names.end())
            names.push_back(name);
        return std::string();
    });
    return names;
}

std::string Filled(const std::string& text, const std::map<std::string, std::string>& values) {
    return Replaced(text, [&values](const std::string& name) {
        const auto place = values.find(name);
        if (place == values.end())
            throw std::invalid_argument("there is no variable {" + name + "}; " + NamesOf(values));
        return place->second;
    });
}

bool IsBlank(const std::string& text) {
    return text.find_first_not_of(" \t\r\n") == std::string::npos;
}

} // namespace controller::speech_text
