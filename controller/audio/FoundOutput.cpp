#include "controller/audio/FoundOutput.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>

namespace controller::audio {

namespace {

std::vector<std::string> WordsOf(const std::string& text) {
    std::istringstream words(text);
    return {std::istream_iterator<std::string>(words), {}};
}

/// As YAML takes it for one text, whatever stands in it.
std::string YamlText(const std::string& text) {
    constexpr const char* kPlain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_.-/";
    const bool isNumber = text.find_first_not_of("0123456789.-_") == std::string::npos;
    if (!isNumber && text.find_first_not_of(kPlain) == std::string::npos && text.front() != '-')
        return text;
    std::string quoted = "\"";
    for (const char letter : text)
        quoted += letter == '"' || letter == '\\' ? std::string("\\") + letter : std::string(1, letter);
    return quoted + "\"";
}

/// A name that looks like a number needs its quotes; a number of milliseconds looks odd in them.
std::string YamlOption(const std::string& value) {
    return value.find_first_not_of("0123456789") == std::string::npos ? value : YamlText(value);
}

std::vector<std::string> OptionsOf(const std::string& kind) {
    for (const OutputHelp& help : ListOutputs())
        if (help.kind == kind)
            return help.options;
    return {};
}

std::string FirstLineOf(const std::string& file) {
    std::ifstream stream(file);
    std::string line;
    std::getline(stream, line);
    return line;
}

} // namespace

std::string TextOf(const OutputDescription& output) {
    return output.text.empty() ? output.kind : output.kind + ": " + output.text;
}

std::string LineFor(const OutputDescription& output) {
    if (output.text.empty())
        return "output: " + output.kind;
    const std::vector<std::string> options = OptionsOf(output.kind);
    std::string main = output.text;
    std::string beside;
    if (!options.empty()) {
        main.clear();
        for (const std::string& word : WordsOf(output.text)) {
            const std::string key = word.substr(0, word.find('='));
            const bool isOption =
                key.size() < word.size() && std::find(options.begin(), options.end(), key) != options.end();
            if (isOption)
                beside += ", " + key + ": " + YamlOption(word.substr(key.size() + 1));
            else
                main += (main.empty() ? "" : " ") + word;
        }
    }
    return "output: {" + output.kind + ": " + YamlText(main) + beside + "}";
}

bool IsAt(const OutputDescription& room, const OutputDescription& place) {
    if (room.kind != place.kind)
        return false;
    if (OptionsOf(room.kind).empty())
        return room.text == place.text;
    const auto words = WordsOf(room.text);
    const auto wanted = WordsOf(place.text);
    return std::all_of(wanted.begin(), wanted.end(), [&](const std::string& word) {
        return std::find(words.begin(), words.end(), word) != words.end();
    });
}

// "00-03: HDMI 0 : HDMI 0 : playback 1 : capture 1", a line each: card, device, id, name, what it can.
std::vector<FoundOutput> CardsIn(const std::string& folder) {
    std::vector<FoundOutput> cards;
    std::ifstream list(folder + "/pcm");
    for (std::string line; std::getline(list, line);) {
        unsigned card = 0;
        unsigned device = 0;
        char dash = 0;
        std::istringstream numbers(line);
        numbers >> card >> dash >> device;
        if (!numbers || dash != '-' || line.find(": playback") == std::string::npos)
            continue;
        const auto begin = line.find(": ");
        const std::string name = line.substr(begin + 2, line.find(" : ", begin) - begin - 2);
        const std::string id = FirstLineOf(folder + "/card" + std::to_string(card) + "/id");
        const std::string address =
            "CARD=" + (id.empty() ? std::to_string(card) : id) + ",DEV=" + std::to_string(device);
        cards.push_back({"sound_card",
                         id.empty() ? name : std::string(id).append(": ").append(name),
                         {"gstreamer", "alsasink device=plughw:" + address},
                         card == 0 && device == 0});
    }
    return cards;
}

} // namespace controller::audio
