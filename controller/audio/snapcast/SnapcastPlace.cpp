#include "controller/audio/snapcast/SnapcastPlace.h"

#include "controller/audio/Output.h"
#include "controller/driver/Text.h"

#include <algorithm>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <vector>

namespace controller::audio {

namespace {

/// Below, snapclients of Debian 12 play nothing, and say nothing of it.
constexpr unsigned kLeastBufferMs = 80;
constexpr unsigned kMostBufferMs = 10'000;

[[noreturn]] void RefusePlace(const std::string& what) {
    throw std::invalid_argument("\"snapcast:\" " + what);
}

[[noreturn]] void RefuseHost(const std::string& text) {
    RefusePlace("server \"" + text +
                "\" is not a host such as nas, 192.168.1.5 or [fd00::5], with or without the port of its "
                "control behind a colon");
}

std::uint16_t ReadPort(const std::string& name, const std::string& text) {
    const auto port = ReadNumber<std::uint16_t>(text, 1, 65535);
    if (!port)
        RefusePlace(name + " \"" + text + "\" is not a port, a whole number from 1 to 65535");
    return *port;
}

void ReadServer(const std::string& text, SnapcastPlace& place) {
    const SnapcastHost read = ReadSnapcastHost(text);
    place.host = read.host;
    place.port = read.port;
}

void ReadWord(const std::string& word, SnapcastPlace& place) {
    const auto equals = word.find('=');
    const std::string name = word.substr(0, equals);
    const std::string value = equals == std::string::npos ? "" : word.substr(equals + 1);
    if (name == "server") {
        ReadServer(value, place);
    } else if (name == "stream") {
        if (value.empty())
            RefusePlace("stream is empty; it is the name of a stream of the server, such as announcements");
        place.stream = value;
    } else if (name == "buffer_ms") {
        const auto buffer = ReadNumber<unsigned>(value, kLeastBufferMs, kMostBufferMs);
        if (!buffer)
            RefusePlace("buffer_ms \"" + value +
                        "\" is not a whole number from 80 to 10000, as `buffer` in snapserver.conf; below "
                        "80 clients play nothing");
        place.buffer = std::chrono::milliseconds(*buffer);
    } else if (name == "source_port") {
        place.sourcePort = ReadPort(name, value);
    } else {
        RefusePlace("\"" + word +
                    "\" is not known; behind the client there may be server=, stream=, buffer_ms= and "
                    "source_port=");
    }
}

} // namespace

std::string SnapcastPlace::Server() const {
    const bool isSix = host.find(':') != std::string::npos;
    return (isSix ? "[" + host + "]" : host) + ":" + std::to_string(port);
}

SnapcastHost ReadSnapcastHost(const std::string& text) {
    if (text.find('/') != std::string::npos)
        RefuseHost(text);
    SnapcastHost read;
    const auto bracket = text.rfind(']');
    const auto colon = text.rfind(':');
    const bool isSix = !text.empty() && text.front() == '[' && bracket != std::string::npos;
    const bool hasPort = colon != std::string::npos && (!isSix || colon == bracket + 1);
    if (hasPort)
        read.port = ReadPort("server: the port", text.substr(colon + 1));
    read.host = hasPort ? text.substr(0, colon) : text;
    if (isSix)
        read.host = read.host.substr(1, bracket - 1);
    if (read.host.empty() || (!isSix && read.host.find(':') != std::string::npos))
        RefuseHost(text);
    return read;
}

SnapcastPlace ReadSnapcastPlace(const std::string& text) {
    std::istringstream stream(text);
    const std::vector<std::string> words(std::istream_iterator<std::string>(stream), {});
    SnapcastPlace place;
    if (words.empty() || words.front().find('=') != std::string::npos)
        RefusePlace("needs the id of a client, such as \"snapcast: kitchen server=nas\"; it is what "
                    "snapclient was given as --hostID, else the address of its network card");
    place.client = words.front();
    for (std::size_t index = 1; index < words.size(); ++index)
        ReadWord(words[index], place);
    if (place.host.empty())
        RefusePlace("needs the server of " + place.client + ", as in `output: {snapcast: " + place.client +
                    ", server: nas}`");
    return place;
}

OutputFacts FactsOfSnapcast(const std::string& text) {
    const SnapcastPlace place = ReadSnapcastPlace(text);
    return {{"client " + place.client + " of " + place.Server()}, {}, true};
}

} // namespace controller::audio
