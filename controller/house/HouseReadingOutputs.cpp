// How the rooms of a house file are heard.
#include "controller/house/HouseReading.h"

#include <algorithm>
#include <stdexcept>

namespace controller {

namespace {

constexpr const char* kOneOutput = "must be one output, as `output: auto` or `output: {file: NAME.wav}`";

/// The kind that a key names; null for a key that names none.
const audio::OutputHelp* FindOutputKind(const std::vector<audio::OutputHelp>& kinds, const std::string& key) {
    const auto place = std::find_if(kinds.begin(), kinds.end(),
                                    [&](const audio::OutputHelp& kind) { return kind.kind == key; });
    return place != kinds.end() ? &*place : nullptr;
}

std::string OptionsOf(const audio::OutputHelp& kind) {
    std::string text;
    for (const std::string& option : kind.options)
        text += (text.empty() ? "" : ", ") + option;
    return text.empty() ? "nothing may stand" : "there may be " + text;
}

/// The keys below `output` in one text, the kind first: `KIND: TEXT OPTION=VALUE …`.
/// @throws std::invalid_argument
std::string OutputOfKeys(const YAML::Node& node) {
    const auto kinds = audio::ListOutputs();
    const audio::OutputHelp* kind = nullptr;
    std::string first;
    for (const auto& pair : node) {
        if (!pair.first.IsScalar() || !pair.second.IsScalar())
            throw std::invalid_argument(kOneOutput);
        const auto* found = FindOutputKind(kinds, pair.first.Scalar());
        if (found != nullptr && kind != nullptr)
            throw std::invalid_argument(kOneOutput);
        kind = found != nullptr ? found : kind;
        if (found != nullptr || node.size() == 1)
            first = pair.first.Scalar() + ": " + pair.second.Scalar();
    }
    std::string rest;
    for (const auto& pair : node) {
        const std::string& key = pair.first.Scalar();
        const std::string& value = pair.second.Scalar();
        if (kind == nullptr || key == kind->kind)
            continue;
        if (std::find(kind->options.begin(), kind->options.end(), key) == kind->options.end())
            throw std::invalid_argument("\"" + key + "\" is not known; beside " + kind->kind + " " +
                                        OptionsOf(*kind));
        if (value.find_first_of(" \t") != std::string::npos)
            throw std::invalid_argument(
                std::string(key).append(" \"").append(value).append("\" must be one word"));
        rest.append(" ").append(key).append("=").append(value);
    }
    return first + rest;
}

} // namespace

/// `output: silent`, `output: "file: NAME"`, or the same as a key below `output`, with what belongs to it
/// beside it.
audio::OutputDescription HouseReading::ReadOutput(HouseMap& map) {
    const YAML::Node node = map.Node("output");
    const bool isText = node.IsDefined() && node.IsScalar();
    try {
        if (node.IsDefined() && !isText && !(node.IsMap() && node.size() > 0))
            throw std::invalid_argument(kOneOutput);
        const std::string text = !node.IsDefined() ? "auto" : isText ? node.Scalar() : OutputOfKeys(node);
        audio::OutputDescription output = audio::ParseOutput(text);
        if (output.kind == "file")
            output.text = Resolve(output.text).string();
        return output;
    } catch (const std::invalid_argument& error) {
        map.Mistake("output", error.what());
        return {};
    }
}

/// Two rooms that record into one file would write over each other; `%r`, the room's id, tells them apart.
void HouseReading::CheckRecording(HouseMap& map, const audio::OutputDescription& output) {
    if (output.kind != "file" || output.text.find("%r") != std::string::npos)
        return;
    if (!m_places.emplace("file: " + output.text, map.Path()).second)
        map.Mistake("output", "another room records into this file already; write %r, which stands for the "
                              "room's id, into its name");
}

/// What may be meant as it is, and is told all the same.
void HouseReading::CheckPlace(HouseMap& map, House::Room& room) {
    const audio::OutputFacts facts = audio::FactsOf(room.output);
    room.isAnswering = facts.isAnswering;
    for (const std::string& doubt : facts.doubts)
        m_house.doubts.push_back({map.LineOf("output"), map.Path() + ".output", doubt});
    if (facts.place.empty())
        return;
    const auto [place, isNew] = m_places.emplace(facts.place, map.Path());
    if (!isNew)
        m_house.doubts.push_back(
            {map.LineOf("output"), map.Path() + ".output",
             facts.place + " is the address of " + place->second +
                 " as well; in an announcement for both, loudspeakers there play either one of "
                 "them or both at once"});
}

} // namespace controller
