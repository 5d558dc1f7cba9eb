#pragma once

#include "controller/audio/multicast/IPacketSink.h"

#include <cstddef>
#include <map>
#include <string>
#include <tuple>

namespace controller::audio {

/// The network: a UDP socket for each route, opened when it is needed and closed in each rest, since an
/// interface that goes and comes is another one.
class PacketSockets final : public IPacketSink {
public:
    PacketSockets() = default;
    ~PacketSockets() override { Rest(); }
    PacketSockets(const PacketSockets&) = delete;
    PacketSockets& operator=(const PacketSockets&) = delete;

    void Send(std::vector<OutgoingPacket>& packets) override;
    void Rest() override;

    /// Why packets for the zone would not leave this machine, as errno, as far as that is known without
    /// sending any; 0: nothing stands in their way.
    [[nodiscard]] static int WhyNoWayTo(const Zone& zone);

private:
    struct Socket {
        int descriptor = -1;
        int error = 0; ///< why there is none
    };
    using Key = std::tuple<int, unsigned, unsigned, std::string>;

    const Socket& SocketFor(const PacketRoute& route);
    void SendOver(int socket, OutgoingPacket* first, std::size_t count);

    std::map<Key, Socket> m_sockets;
};

} // namespace controller::audio
