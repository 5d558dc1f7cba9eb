#pragma once

#include "controller/audio/OutputDescription.h"
#include "controller/audio/multicast/ZoneCodec.h"

#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include <sys/socket.h>

namespace controller::audio {

/// How packets leave this machine: zones that have it in common share a socket.
struct PacketRoute {
    int family = AF_INET;
    unsigned ttl = 1;
    unsigned dscp = 46;        ///< "expedited forwarding", as speech has it
    std::string interfaceName; ///< empty: the one that the system chooses

    [[nodiscard]] auto Key() const { return std::tie(family, ttl, dscp, interfaceName); }
};

/// A multicast address at which loudspeakers listen, and what is sent there.
struct Zone {
    std::string place; ///< its address and port, as people write them
    sockaddr_storage address{};
    socklen_t addressLength = 0;
    const ZoneCodec* codec = kZoneCodecs.data();
    PacketRoute route;
    std::string urgent; ///< their second address, where they interrupt what they play; empty: none
};

/// Reads "ADDRESS:PORT [codec=…] [ttl=…] [dscp=…] [interface=…] [urgent=ADDRESS:PORT]".
/// @throws std::invalid_argument that says what is wrong and what would be right.
[[nodiscard]] Zone ReadZone(const std::string& text);

/// The same loudspeakers at their second address; nothing where they have none.
[[nodiscard]] std::optional<Zone> UrgentZoneOf(const Zone& zone);

/// In words; `error` as errno.
[[nodiscard]] std::string NothingIsSentTo(const Zone& zone, int error);

/// What is allowed, and probably not meant.
[[nodiscard]] std::vector<std::string> DoubtsAbout(const Zone& zone);

} // namespace controller::audio
