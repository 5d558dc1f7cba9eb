// The voices of a house file.
#include "controller/house/HouseReading.h"

#include <algorithm>
#include <cctype>

namespace controller {

namespace {

constexpr std::uint32_t kUsualPort = 10200;
constexpr std::size_t kMostWords = 50;

/// A tag of a language, as "de" or "en-GB"; engines get it as it is.
bool IsLanguage(const std::string& text) {
    const auto isOf = [](unsigned char letter) {
        return letter < 128 && (std::isalnum(letter) != 0 || letter == '-');
    };
    return text.size() <= 35 && text.size() >= 2 && text.front() != '-' &&
           std::all_of(text.begin(), text.end(), isOf);
}

} // namespace

/// `command: [PROGRAM, ARGUMENT, …]`.
std::vector<std::string> HouseReading::ReadCommand(HouseMap& map) {
    const YAML::Node list = map.Node("command");
    std::vector<std::string> words;
    const bool isList = list.IsDefined() && list.IsSequence() && list.size() > 0 && list.size() <= kMostWords;
    for (std::size_t index = 0; isList && index < list.size(); ++index)
        words.push_back(list[index].IsScalar() ? list[index].Scalar() : "");
    if (words.empty() || words.front().empty())
        map.Mistake("command",
                    "must be a program and its arguments, as `command: [flite, -voice, \"{voice}\", -o, "
                    "/dev/stdout]`; it takes the text on standard input and gives a WAV file");
    else if (words.front().front() != '/' && words.front().find('/') != std::string::npos)
        map.Mistake("command", "the program must be named from the root, or be one that is installed: no " +
                                   words.front());
    return words;
}

void HouseReading::ReadVoice(HouseMap& map) {
    House::Voice voice;
    voice.name = map.Text("name");
    voice.engine = map.Text("engine", "espeak");
    voice.language = map.Text("language");
    if (!voice.language.empty() && !IsLanguage(voice.language))
        map.Mistake("language", "\"" + voice.language + "\" is no language; write it as en, de or pt-BR");
    voice.voice = map.TextOrEmpty("voice");
    if (voice.engine == "command") {
        voice.command = ReadCommand(map);
    } else if (voice.engine == "wyoming") {
        voice.host = map.Text("host");
        voice.port = static_cast<std::uint16_t>(map.Number("port", 1, 65535, kUsualPort));
    } else if (voice.engine != "espeak") {
        map.Mistake("engine", "\"" + voice.engine + "\" is no engine; there are espeak, command and wyoming");
        for (const char* key : {"command", "host", "port"})
            (void)map.Node(key); // which of them belong to it is not known
    }
    const bool isTwice = std::any_of(m_house.voices.begin(), m_house.voices.end(),
                                     [&](const House::Voice& other) { return other.name == voice.name; });
    if (isTwice && !voice.name.empty())
        map.Mistake("name", "another voice is named " + voice.name + " already");
    m_house.voices.push_back(std::move(voice));
}

} // namespace controller
