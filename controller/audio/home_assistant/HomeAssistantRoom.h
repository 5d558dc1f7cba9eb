#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace controller::audio {

/// Where a server of HTTP is.
struct HttpPlace {
    bool isSecure = false;
    std::string host; ///< without the brackets of IPv6
    std::uint16_t port = 0;
    std::string path; ///< in front of every path there; empty, or begins with a slash and ends with none

    /// "http://192.168.1.10:8123", as people write it.
    [[nodiscard]] std::string Name() const;

    /// What a request calls it.
    [[nodiscard]] std::string Authority() const;
};

/// Reads "http://HOST:PORT" or "https://HOST"; `defaultPort` of http.
/// @throws std::invalid_argument that says what is wrong.
[[nodiscard]] HttpPlace ReadHttpPlace(const std::string& text, std::uint16_t defaultPort);

/// A player of Home Assistant, and the way to it.
struct HomeAssistantRoom {
    std::string player; ///< "media_player.kitchen"
    HttpPlace server;
    std::string tokenFile;
    std::string ourUrl; ///< where players find this controller; empty: as that house sees it
};

/// Reads "media_player.NAME url=… token_file=… [our_url=…]".
/// @throws std::invalid_argument that says what is wrong and what would be right.
[[nodiscard]] HomeAssistantRoom ReadHomeAssistantRoom(const std::string& text);

/// What is allowed, and probably not meant.
[[nodiscard]] std::vector<std::string> DoubtsAbout(const HomeAssistantRoom& room);

/// The token that the file holds, which is read anew each time.
/// @throws std::runtime_error when there is none, or everybody can read it.
[[nodiscard]] std::string ReadHouseToken(const std::string& file);

} // namespace controller::audio
