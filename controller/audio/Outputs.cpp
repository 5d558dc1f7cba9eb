#include "controller/audio/Output.h"
#include "controller/audio/OutputDescription.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace controller::audio {

namespace {

constexpr std::array kOutputKinds{
    OutputKind{"auto", "auto", "the machine's default sound device; silence in real time where there is none",
               &CreateAutoOutput, "", nullptr, &AskAuto},
    OutputKind{"silent", "silent", "no sound, in real time", &CreateSilentOutput, "", nullptr, &AskSilent},
    OutputKind{"file", "file: PATTERN",
               "records what the room hears as WAV, one file for each announcement; in the pattern %n is its "
               "number since the start, %r the room's id, %% a percent sign; folders are created",
               &CreateFileOutput, "", nullptr, &AskFile},
    OutputKind{"gstreamer", "gstreamer: BIN",
               "a GStreamer bin description with one free input for raw audio, such as "
               "\"pulsesink device=kitchen\"",
               &CreateGstreamerOutput, "", nullptr, nullptr, &FindCards},
    OutputKind{
        "multicast", "multicast: ADDRESS:PORT",
        "RTP to a multicast address, for IP loudspeakers and telephones; beside it codec: pcmu or l16, "
        "ttl, dscp, interface, and as urgent a second address for announcements that are",
        &CreateMulticastOutput, "codec ttl dscp interface urgent", &FactsOfMulticast, &AskMulticast},
    OutputKind{
        "page", "page: NAVIGATOR",
        "the page of a screen, by the id of its navigator, or \"own\" for the one of the room: a tablet "
        "on the wall is the loudspeaker",
        &CreatePageOutput, "", nullptr, &AskPage, &FindPages},
    OutputKind{
        "pulse", "pulse: SINK",
        "a sink of PulseAudio or PipeWire by its name, or \"default\"; what others play there is lowered "
        "meanwhile, as duck says: decibels, -15 where nothing is said, off or pause",
        &CreatePulseOutput, "duck", nullptr, &AskPulse, &FindSinks},
    OutputKind{"snapcast", "snapcast: CLIENT",
               "a client of a Snapcast server, by its id; beside it server, and where they differ from the "
               "usual stream, buffer_ms, source_port",
               &CreateSnapcastOutput, "server stream buffer_ms source_port", &FactsOfSnapcast, &AskSnapcast,
               &FindClients},
    OutputKind{"home_assistant", "home_assistant: PLAYER",
               "a player of Home Assistant, such as media_player.kitchen, which announces; beside it url, "
               "token_file and, where players find this controller elsewhere, our_url",
               &CreateHomeAssistantOutput, "url token_file our_url", &FactsOfHomeAssistant,
               &AskHomeAssistant},
};

std::string Trim(const std::string& text) {
    constexpr const char* kSpace = " \t\r\n";
    const auto first = text.find_first_not_of(kSpace);
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(kSpace) - first + 1);
}

std::string Forms() {
    std::string forms;
    for (const OutputKind& row : kOutputKinds)
        forms += (forms.empty() ? "\"" : ", \"") + std::string(row.form) + "\"";
    return forms;
}

/// What belongs to an output stands behind it with spaces alone; a comma would be taken for a letter of the
/// name.
void RefuseCommas(const OutputKind& row, const std::string& text) {
    std::istringstream words(*row.options != '\0' ? text : "");
    for (std::string word; words >> word;)
        if (word.size() > 1 && word.back() == ',')
            throw std::invalid_argument("a comma stands behind \"" + word.substr(0, word.size() - 1) +
                                        "\"; in one text there are spaces alone, as in \"" + row.kind +
                                        ": NAME KEY=VALUE KEY=VALUE\"");
}

} // namespace

const OutputKind* FindOutputKind(const std::string& kind) {
    const auto* row = std::find_if(kOutputKinds.begin(), kOutputKinds.end(),
                                   [&](const OutputKind& known) { return kind == known.kind; });
    return row != kOutputKinds.end() ? row : nullptr;
}

std::vector<std::string> KindsThatFind() {
    // The cards behind a sound server come after its sinks.
    std::vector<std::string> kinds;
    for (auto row = kOutputKinds.rbegin(); row != kOutputKinds.rend(); ++row)
        if (row->find != nullptr)
            kinds.emplace_back(row->kind);
    return kinds;
}

Output CreateOutput(const OutputDescription& description) {
    const OutputKind* row = FindOutputKind(description.kind);
    if (row == nullptr)
        throw std::invalid_argument("\"" + description.kind + "\" is no kind of output; there are " +
                                    Forms());
    RefuseCommas(*row, description.text);
    return row->create(description.text);
}

OutputDescription ParseOutput(const std::string& text) {
    StartGstreamer();
    const auto colon = text.find(':');
    OutputDescription description;
    description.kind = Trim(text.substr(0, colon));
    description.text = colon == std::string::npos ? "" : Trim(text.substr(colon + 1));
    (void)CreateOutput(description); // Only to have it checked.
    return description;
}

OutputFacts FactsOf(const OutputDescription& description) {
    const OutputKind* row = FindOutputKind(description.kind);
    return row != nullptr && row->facts != nullptr ? row->facts(description.text) : OutputFacts{};
}

std::vector<OutputHelp> ListOutputs() {
    std::vector<OutputHelp> list;
    list.reserve(kOutputKinds.size());
    for (const OutputKind& row : kOutputKinds) {
        std::istringstream options(row.options);
        list.push_back({row.kind, row.form, row.meaning,
                        std::vector<std::string>(std::istream_iterator<std::string>(options), {})});
    }
    return list;
}

} // namespace controller::audio
