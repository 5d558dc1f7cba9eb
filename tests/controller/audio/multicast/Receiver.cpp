#include "tests/controller/audio/multicast/Receiver.h"

#include "controller/audio/multicast/PacketSockets.h"

#include <gtest/gtest.h>

#include <array>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <unistd.h>

namespace controller::audio::test {

Receiver::Receiver(const std::string& group)
    : m_group(group)
    , m_socket(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    EXPECT_EQ(inet_pton(AF_INET, group.c_str(), &address.sin_addr), 1);
    auto* place = reinterpret_cast<sockaddr*>(&address); // NOLINT(*-reinterpret-cast)
    EXPECT_EQ(bind(m_socket, place, sizeof address), 0);
    socklen_t length = sizeof address;
    EXPECT_EQ(getsockname(m_socket, place, &length), 0);
    m_port = ntohs(address.sin_port);
    ip_mreq membership{address.sin_addr, {htonl(INADDR_LOOPBACK)}};
    EXPECT_EQ(setsockopt(m_socket, IPPROTO_IP, IP_ADD_MEMBERSHIP, &membership, sizeof membership), 0);
}

Receiver::~Receiver() {
    close(m_socket);
}

std::string Receiver::Output() const {
    return "multicast: " + m_group + ":" + std::to_string(m_port) + " interface=lo";
}

std::vector<std::vector<std::uint8_t>> Receiver::Take() const {
    std::vector<std::vector<std::uint8_t>> packets;
    std::array<std::uint8_t, 2000> bytes{};
    for (auto size = recv(m_socket, bytes.data(), bytes.size(), 0); size >= 0;
         size = recv(m_socket, bytes.data(), bytes.size(), 0))
        packets.emplace_back(bytes.begin(), bytes.begin() + size);
    return packets;
}

bool Receiver::CanHear() const {
    const Zone zone = ReadZone(Output().substr(std::string("multicast: ").size()));
    const std::vector<std::uint8_t> payload(1);
    std::vector<OutgoingPacket> packets{{&zone, {}, &payload}};
    PacketSockets().Send(packets);
    pollfd descriptor{m_socket, POLLIN, 0};
    return packets.front().error == 0 && poll(&descriptor, 1, 1000) == 1 && Take().size() == 1;
}

} // namespace controller::audio::test
