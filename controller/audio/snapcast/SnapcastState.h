#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace controller::audio {

struct SnapcastVolume {
    unsigned percent = 100;
    bool isMuted = false;
};

struct SnapcastClient {
    std::string id;
    bool isConnected = false;
    SnapcastVolume volume;
};

/// Clients that hear one stream.
struct SnapcastGroup {
    std::string id;
    std::string stream;
    bool isMuted = false;
    std::vector<SnapcastClient> clients;

    [[nodiscard]] std::vector<std::string> Members() const;
};

struct SnapcastStream {
    std::string id;
    std::string scheme;     ///< "tcp", "pipe" …
    std::string format;     ///< "48000:16:2"
    std::uint16_t port = 0; ///< Where a source of "tcp" listens.
};

/// What a Snapcast server has, or why it cannot be known.
struct SnapcastState {
    bool isThere = false;
    bool isHanging = false; ///< It does not answer.
    std::string reason;     ///< Why it is not there.
    std::string address;    ///< of the server, numeric
    std::vector<SnapcastGroup> groups;
    std::vector<SnapcastStream> streams;

    /// Null where there is none.
    [[nodiscard]] const SnapcastGroup* FindGroup(const std::string& id) const;
    [[nodiscard]] const SnapcastGroup* GroupOf(const std::string& client) const;
    [[nodiscard]] const SnapcastClient* FindClient(const std::string& id) const;
    [[nodiscard]] const SnapcastStream* FindStream(const std::string& id) const;
    /// The usual one, where there is no such client.
    [[nodiscard]] SnapcastVolume VolumeOf(const std::string& client) const;
};

/// Reads the result of "Server.GetStatus", JSON.
/// @throws std::runtime_error when it is none.
[[nodiscard]] SnapcastState ReadSnapcastState(const std::string& result);

} // namespace controller::audio
