#include "controller/audio/home_assistant/HomeAssistantRoom.h"

#include "controller/driver/Descriptor.h"
#include "controller/driver/Text.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <string_view>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace controller::audio {

namespace {

constexpr std::uint16_t kHousePort = 8123;
constexpr std::string_view kPlayerKind = "media_player.";
constexpr const char* kHow = "; such as `output: {home_assistant: media_player.kitchen, url: "
                             "\"http://192.168.1.10:8123\", token_file: home-assistant.token}`";

[[noreturn]] void RefuseHouse(const std::string& what) {
    throw std::invalid_argument("\"home_assistant:\" " + what);
}

bool IsPlayer(const std::string& text) {
    return text.size() > kPlayerKind.size() && text.compare(0, kPlayerKind.size(), kPlayerKind) == 0 &&
           std::all_of(text.begin() + kPlayerKind.size(), text.end(), [](char letter) {
               return (letter >= 'a' && letter <= 'z') || (letter >= '0' && letter <= '9') || letter == '_';
           });
}

bool IsHostName(const std::string& text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char letter) {
        return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') ||
               (letter >= '0' && letter <= '9') ||
               std::string_view(".-_:%").find(letter) != std::string_view::npos;
    });
}

/// What stands behind the scheme, taken apart: "host:port" or "[address]:port".
void ReadAuthority(const std::string& text, HttpPlace& place) {
    const bool isBracketed = !text.empty() && text.front() == '[';
    const auto hostEnd = isBracketed ? text.find(']') : text.find(':');
    place.host = isBracketed ? text.substr(1, hostEnd == std::string::npos ? 0 : hostEnd - 1)
                             : text.substr(0, hostEnd);
    const std::string rest = hostEnd == std::string::npos ? "" : text.substr(hostEnd + (isBracketed ? 1 : 0));
    if (!rest.empty()) {
        const auto port = ReadNumber<std::uint16_t>(rest.substr(1), 1, 65535);
        if (rest.front() != ':' || !port)
            throw std::invalid_argument("has no port behind its host, but \"" + rest + "\"");
        place.port = *port;
    }
    if (!IsHostName(place.host))
        throw std::invalid_argument("names no host");
}

void ReadHouseOption(const std::string& word, HomeAssistantRoom& room) {
    const auto equals = word.find('=');
    const std::string name = word.substr(0, equals);
    const std::string value = equals == std::string::npos ? "" : word.substr(equals + 1);
    try {
        if (name == "url")
            room.server = ReadHttpPlace(value, kHousePort);
        else if (name == "our_url")
            room.ourUrl = ReadHttpPlace(value, 80).Name();
        else if (name == "token_file")
            room.tokenFile = value;
        else
            RefuseHouse("takes url, token_file and our_url beside it, not \"" + word + "\"");
    } catch (const std::invalid_argument& error) {
        if (name != "url" && name != "our_url")
            throw;
        RefuseHouse(name + " \"" + value + "\" " + error.what() + kHow);
    }
}

} // namespace

std::string HttpPlace::Authority() const {
    const bool isSix = host.find(':') != std::string::npos;
    const std::uint16_t usual = isSecure ? 443 : 80;
    return (isSix ? "[" + host + "]" : host) + (port == usual ? "" : ":" + std::to_string(port));
}

std::string HttpPlace::Name() const {
    return (isSecure ? "https://" : "http://") + Authority() + path;
}

HttpPlace ReadHttpPlace(const std::string& text, std::uint16_t defaultPort) {
    HttpPlace place;
    std::string rest;
    for (const bool isSecure : {false, true}) {
        const std::string scheme = isSecure ? "https://" : "http://";
        if (text.compare(0, scheme.size(), scheme) != 0)
            continue;
        place.isSecure = isSecure;
        place.port = isSecure ? 443 : defaultPort;
        rest = text.substr(scheme.size());
    }
    if (rest.empty())
        throw std::invalid_argument("does not begin with http:// or https:// and a host");
    const auto slash = rest.find('/');
    ReadAuthority(rest.substr(0, slash), place);
    if (slash != std::string::npos)
        place.path = rest.substr(slash);
    while (!place.path.empty() && place.path.back() == '/')
        place.path.pop_back();
    if (place.path.find_first_of("?#") != std::string::npos)
        throw std::invalid_argument("has something behind its path");
    return place;
}

HomeAssistantRoom ReadHomeAssistantRoom(const std::string& text) {
    std::istringstream stream(text);
    const std::vector<std::string> words(std::istream_iterator<std::string>(stream), {});
    HomeAssistantRoom room;
    room.player = words.empty() ? "" : words.front();
    if (!IsPlayer(room.player))
        RefuseHouse("needs a player of Home Assistant, not \"" + room.player + "\"" + kHow);
    for (std::size_t index = 1; index < words.size(); ++index)
        ReadHouseOption(words[index], room);
    if (room.server.host.empty())
        RefuseHouse(std::string("needs url, where Home Assistant is") + kHow);
    if (room.tokenFile.empty())
        RefuseHouse(std::string("needs token_file, with a long-lived access token of Home Assistant") + kHow);
    return room;
}

std::vector<std::string> DoubtsAbout(const HomeAssistantRoom& room) {
    try {
        (void)ReadHouseToken(room.tokenFile);
    } catch (const std::runtime_error& error) {
        return {error.what()};
    }
    return {};
}

std::string ReadHouseToken(const std::string& file) {
    constexpr std::size_t kMost = 4096;
    const Descriptor descriptor(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat facts {};
    std::array<char, kMost> bytes{};
    ssize_t count = -1;
    if (descriptor.IsOpen() && ::fstat(descriptor.Number(), &facts) == 0)
        count = ::read(descriptor.Number(), bytes.data(), bytes.size());
    if (count < 0)
        throw std::runtime_error("the token of Home Assistant cannot be read from " + file + ": " +
                                 std::strerror(errno));
    if ((facts.st_mode & S_IROTH) != 0)
        throw std::runtime_error("everybody on this machine can read the token in " + file +
                                 "; `chmod 640` takes that away");
    std::istringstream text(std::string(bytes.data(), static_cast<std::size_t>(count)));
    std::string token;
    text >> token;
    const bool isToken = !token.empty() && std::all_of(token.begin(), token.end(), [](char letter) {
        return letter > ' ' && letter <= '~';
    });
    if (!isToken || !(text >> std::ws).eof())
        throw std::runtime_error("there is no token of Home Assistant in " + file +
                                 ", or more than one; it is one long word");
    return token;
}

} // namespace controller::audio
