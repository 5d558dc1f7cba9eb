#include "controller/house/HouseFile.h"
#include "fuzz/Require.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

#include <yaml-cpp/yaml.h>

namespace controller {

namespace {

/// Relative paths of the corpus begin here, so that what is written absolute stays as it is.
constexpr const char* kFolder = "/";

void Entry(YAML::Emitter& out, const char* key, const std::string& text) {
    out << YAML::Key << key << YAML::Value << YAML::DoubleQuoted << text;
}

void Entry(YAML::Emitter& out, const char* key, std::uint32_t number) {
    out << YAML::Key << key << YAML::Value << number;
}

template <class List, class Write>
void Entries(YAML::Emitter& out, const char* key, const List& list, const Write& write) {
    out << YAML::Key << key << YAML::Value << YAML::BeginSeq;
    for (const auto& one : list) {
        out << YAML::BeginMap;
        write(one);
        out << YAML::EndMap;
    }
    out << YAML::EndSeq;
}

void WriteRoom(YAML::Emitter& out, const House::Room& room) {
    Entry(out, "id", room.id);
    Entry(out, "name", room.name);
    Entry(out, "output",
          room.output.text.empty() ? room.output.kind : room.output.kind + ": " + room.output.text);
    Entry(out, "max_volume", room.maxVolume);
    Entry(out, "start_volume", room.startVolume);
    Entry(out, "lead_silence_ms", room.leadSilenceMs);
}

void WriteToken(YAML::Emitter& out, const Token& token) {
    Entry(out, "name", token.name);
    Entry(out, "hash", token.hash);
    out << YAML::Key << "rights" << YAML::Value << YAML::BeginSeq;
    for (const std::string& right : token.rights.Texts())
        out << YAML::DoubleQuoted << right;
    out << YAML::EndSeq;
}

/// The house, with nothing left out.
std::string Write(const House& house) {
    YAML::Emitter out;
    out << YAML::BeginMap;
    Entry(out, "name", house.name);
    Entry(out, "address", house.address);
    Entry(out, "port", house.port);
    Entry(out, "media_folder", house.mediaFolder.string());
    Entry(out, "data_folder", house.dataFolder.string());
    if (!house.firstAnnouncements.empty())
        Entry(out, "first_announcements", house.firstAnnouncements.string());
    Entries(out, "rooms", house.rooms, [&](const House::Room& room) { WriteRoom(out, room); });
    Entries(out, "navigators", house.navigators, [&](const House::Navigator& navigator) {
        Entry(out, "id", navigator.id);
        Entry(out, "name", navigator.name);
        Entry(out, "room", navigator.room);
    });
    Entries(out, "variables", house.variables, [&](const House::Variable& variable) {
        Entry(out, "device", variable.device);
        Entry(out, "variable", variable.variable);
        Entry(out, "name", variable.name);
        Entry(out, "value", variable.value);
    });
    Entries(out, "tokens", house.tokens, [&](const Token& token) { WriteToken(out, token); });
    if (!house.tls.certificate.empty()) {
        out << YAML::Key << "tls" << YAML::Value << YAML::BeginMap;
        Entry(out, "certificate", house.tls.certificate.string());
        Entry(out, "key", house.tls.key.string());
        out << YAML::EndMap;
    }
    out << YAML::EndMap;
    return out.c_str();
}

void CheckMistakes(const HouseError& error, const std::string& text) {
    const auto lines =
        1 + std::count_if(text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r'; });
    Require(!error.Mistakes().empty(), "a refusal names a mistake");
    for (const HouseMistake& mistake : error.Mistakes()) {
        Require(!mistake.text.empty(), "a mistake has words");
        Require(mistake.line >= 0 && mistake.line <= lines + 1, "a mistake stands in the file");
        Require(mistake.line > 0 || mistake.key.empty(), "a mistake about a key has its line");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    // Descriptions of outputs are read by another library, which loads whatever this machine has for them.
    if (text.find("gstreamer") != std::string::npos)
        return 0;
    try {
        const std::string written = Write(ReadHouse(text, kFolder, "house.yaml"));
        Require(Write(ReadHouse(written, kFolder, "house.yaml")) == written, "what was read is read again");
    } catch (const HouseError& error) {
        CheckMistakes(error, text);
    }
    return 0;
}

} // namespace controller
