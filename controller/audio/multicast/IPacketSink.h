#pragma once

#include "controller/audio/multicast/RtpStream.h"
#include "controller/audio/multicast/Zone.h"

#include <cstdint>
#include <vector>

namespace controller::audio {

/// One packet on its way; zone and payload are borrowed until it is sent.
struct OutgoingPacket {
    const Zone* zone = nullptr;
    RtpStream::Header header{};
    const std::vector<std::uint8_t>* payload = nullptr;
    int error = 0; ///< why it was not sent, as errno; 0: it was
};

/// Where packets go.
class IPacketSink {
public:
    virtual ~IPacketSink() = default;

    /// Sends them, in this order, and sets the error of those that it could not send.
    virtual void Send(std::vector<OutgoingPacket>& packets) = 0;

    /// There is nothing to send for a while.
    virtual void Rest() = 0;
};

} // namespace controller::audio
