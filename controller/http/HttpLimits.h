#pragma once

#include <chrono>
#include <cstddef>

namespace controller {

/// What a client can make the server hold or wait for.
struct HttpLimits {
    std::size_t connections = 2000;
    std::size_t connectionsPerAddress = 100; ///< of strangers: see Connections.h
    std::size_t connectionsPerNetwork = 400; ///< of strangers of one /24 or /64
    std::size_t headerBytes = 8192;
    std::size_t targetBytes = 2048;
    std::size_t queuedMessages = 10'000;             ///< of a WebSocket, behind the one that is being written
    std::size_t queuedBytes = std::size_t{1} << 20U; ///< likewise
    std::size_t messageBytes = 4096;                 ///< of a message that a client sends
    std::size_t messagesPerMinute = 600;             ///< that a client may send
    std::chrono::seconds handshake{10};
    std::chrono::seconds idle{75};    ///< between requests
    std::chrono::seconds request{15}; ///< from a head's first byte to its last
    std::chrono::seconds reply{30};   ///< for a reply to be taken, longer for a long one
    std::chrono::seconds alive{20};   ///< a WebSocket without other messages hears from us so often
    std::chrono::seconds silence{65}; ///< a WebSocket whose client answers no ping for so long is dropped
};

} // namespace controller
