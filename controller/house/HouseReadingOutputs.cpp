// How the rooms of a house file are heard.
#include "controller/house/HouseReading.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>

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
    std::string names;
    for (const auto& pair : node) {
        if (!pair.first.IsScalar() || !pair.second.IsScalar())
            throw std::invalid_argument(kOneOutput);
        const auto* found = FindOutputKind(kinds, pair.first.Scalar());
        if (found != nullptr && kind != nullptr)
            throw std::invalid_argument(kOneOutput);
        kind = found != nullptr ? found : kind;
        if (found != nullptr)
            first = pair.first.Scalar() + ": " + pair.second.Scalar();
        names += (names.empty() ? "" : ", ") + pair.first.Scalar();
    }
    if (kind == nullptr)
        return names; // which is no kind, and is said to be none
    std::string rest;
    for (const auto& pair : node) {
        const std::string& key = pair.first.Scalar();
        const std::string& value = pair.second.Scalar();
        if (key == kind->kind)
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

/// A file that belongs to an output stands beside the house file, unless it says its whole path.
void HouseReading::ResolveTokenFile(std::string& text) const {
    constexpr std::string_view kKey = " token_file=";
    const auto key = text.find(kKey);
    if (key == std::string::npos)
        return;
    const auto begin = key + kKey.size();
    const auto end = std::min(text.find(' ', begin), text.size());
    text.replace(begin, end - begin, Resolve(text.substr(begin, end - begin)).string());
}

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
        ResolveTokenFile(output.text);
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
    for (const std::string& address : facts.places) {
        const auto [place, isNew] = m_places.emplace(address, map.Path());
        if (!isNew)
            m_house.doubts.push_back(
                {map.LineOf("output"), map.Path() + ".output",
                 address + " is the address of " + place->second +
                     " as well; in an announcement for both, loudspeakers there play either one of "
                     "them or both at once"});
    }
}

void HouseReading::CheckPages() {
    for (const auto& [index, place] : m_pagePlaces)
        CheckPage(place, m_house.rooms[index]);
}

/// The page of a screen that there is, whichever the room means by its own; and one room alone on it.
void HouseReading::CheckPage(const EntryPlace& place, House::Room& room) {
    const auto refuse = [&](const std::string& text) {
        m_mistakes.push_back({place.line, place.path, text});
    };
    const bool isOwn = room.output.text.empty() || room.output.text == audio::kOwnPage;
    std::vector<std::string> found;
    for (const House::Navigator& navigator : m_house.navigators) {
        const std::string id = std::to_string(navigator.id);
        if (isOwn ? navigator.room == room.id : id == room.output.text)
            found.push_back(id);
    }
    if (found.empty())
        refuse(isOwn
                   ? "no navigator of this file stands in the room; name the one whose page plays, as "
                     "`page: ID`"
                   : "there is no navigator " + room.output.text + "; name one of this file, as `page: ID`");
    else if (found.size() > 1)
        refuse("the room has " + std::to_string(found.size()) +
               " navigators; name the one whose page plays, as `page: " + found.front() + "`");
    else if (const auto [other, isNew] = m_places.emplace("page: " + found.front(), place.path); !isNew)
        refuse("the page of screen " + found.front() + " is " + other->second +
               " already, and plays one sound at a time");
    else
        room.output.text = found.front();
}

} // namespace controller
