#pragma once

#include "controller/audio/OutputDescription.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace controller::audio {

/// A client of a Snapcast server, and the stream of that server that announcements are fed to.
struct SnapcastPlace {
    std::string client; ///< its id, as the server has it
    std::string host;   ///< of the server; without brackets
    std::uint16_t port = 1705;
    std::string stream = "announcements";
    std::chrono::milliseconds buffer{1000};  ///< as the server is set; it does not tell
    std::optional<std::uint16_t> sourcePort; ///< of the stream; nothing: as the server tells

    /// "HOST:PORT", as people write it.
    [[nodiscard]] std::string Server() const;
};

/// A server as "HOST", "HOST:PORT" or "[ADDRESS]:PORT".
struct SnapcastHost {
    std::string host;
    std::uint16_t port = 1705;
};

/// @throws std::invalid_argument that says what is wrong and what would be right.
[[nodiscard]] SnapcastHost ReadSnapcastHost(const std::string& text);

/// Reads "CLIENT server=HOST [stream=…] [buffer_ms=…] [source_port=…]".
/// @throws std::invalid_argument that says what is wrong and what would be right.
[[nodiscard]] SnapcastPlace ReadSnapcastPlace(const std::string& text);

} // namespace controller::audio
