#include "controller/audio/multicast/PacketSockets.h"

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <utility>

#include <net/if.h>
#include <netinet/in.h>
#include <netinet/ip.h>
#include <sys/time.h>
#include <unistd.h>

namespace controller::audio {

namespace {

/// A thousand packets at once, without waiting for the network in between; the system may grant less.
constexpr int kSendBuffer = 1 << 20;

template <class Value>
bool Set(int socket, int level, int option, const Value& value) {
    return setsockopt(socket, level, option, &value, sizeof value) == 0;
}

bool SetUpFour(int socket, const PacketRoute& route, int interfaceIndex) {
    ip_mreqn through{};
    through.imr_ifindex = interfaceIndex;
    return Set(socket, IPPROTO_IP, IP_MULTICAST_TTL, static_cast<int>(route.ttl)) &&
           Set(socket, IPPROTO_IP, IP_TOS, static_cast<int>(route.dscp << 2U)) &&
           (interfaceIndex == 0 || Set(socket, IPPROTO_IP, IP_MULTICAST_IF, through));
}

bool SetUpSix(int socket, const PacketRoute& route, int interfaceIndex) {
    return Set(socket, IPPROTO_IPV6, IPV6_MULTICAST_HOPS, static_cast<int>(route.ttl)) &&
           Set(socket, IPPROTO_IPV6, IPV6_TCLASS, static_cast<int>(route.dscp << 2U)) &&
           (interfaceIndex == 0 || Set(socket, IPPROTO_IPV6, IPV6_MULTICAST_IF, interfaceIndex));
}

/// -1 with errno when the route cannot be had.
int OpenSocket(const PacketRoute& route) {
    const auto index = route.interfaceName.empty() ? 0U : if_nametoindex(route.interfaceName.c_str());
    if (index == 0 && !route.interfaceName.empty())
        return -1;
    const int socket = ::socket(route.family, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (socket < 0)
        return -1;
    (void)Set(socket, SOL_SOCKET, SO_SNDBUF, kSendBuffer); // As much as there is.
    // A network that takes nothing must not hold up the next packets.
    const timeval patience{0, 20'000};
    const auto setUp = route.family == AF_INET6 ? SetUpSix : SetUpFour;
    if (Set(socket, SOL_SOCKET, SO_SNDTIMEO, patience) && setUp(socket, route, static_cast<int>(index)))
        return socket;
    const int error = errno;
    close(socket);
    errno = error;
    return -1;
}

} // namespace

void PacketSockets::Send(std::vector<OutgoingPacket>& packets) {
    for (auto first = packets.begin(); first != packets.end();) {
        const auto last = std::find_if(first, packets.end(), [&](const OutgoingPacket& packet) {
            return packet.zone->route.Key() != first->zone->route.Key();
        });
        const Socket& socket = SocketFor(first->zone->route);
        if (socket.error == 0)
            SendOver(socket.descriptor, &*first, static_cast<std::size_t>(std::distance(first, last)));
        else
            std::for_each(first, last, [&](OutgoingPacket& packet) { packet.error = socket.error; });
        first = last;
    }
    // What could not be opened now may be possible with the next packet.
    for (auto place = m_sockets.begin(); place != m_sockets.end();)
        place = place->second.error != 0 ? m_sockets.erase(place) : std::next(place);
}

const PacketSockets::Socket& PacketSockets::SocketFor(const PacketRoute& route) {
    const auto [place, isNew] = m_sockets.try_emplace(Key(route.Key()));
    Socket& socket = place->second;
    if (isNew) {
        socket.descriptor = OpenSocket(route);
        socket.error = socket.descriptor < 0 ? errno : 0;
    }
    return socket;
}

void PacketSockets::SendOver(int socket, OutgoingPacket* first, std::size_t count) {
    std::vector<iovec> parts(count * 2);
    std::vector<mmsghdr> messages(count);
    for (std::size_t index = 0; index < count; ++index) {
        OutgoingPacket& packet = first[index];
        auto* payload = const_cast<std::uint8_t*>(packet.payload->data()); // NOLINT(*-const-cast): it is read
        parts[2 * index] = {packet.header.data(), packet.header.size()};
        parts[2 * index + 1] = {payload, packet.payload->size()};
        auto* address = const_cast<sockaddr_storage*>(&packet.zone->address); // NOLINT(*-const-cast)
        messages[index].msg_hdr.msg_name = address;
        messages[index].msg_hdr.msg_namelen = packet.zone->addressLength;
        messages[index].msg_hdr.msg_iov = &parts[2 * index];
        messages[index].msg_hdr.msg_iovlen = 2;
    }
    for (std::size_t done = 0; done < count;) {
        const int sent = sendmmsg(socket, &messages[done], static_cast<unsigned>(count - done), 0);
        if (sent > 0)
            done += static_cast<std::size_t>(sent);
        else if (errno == EAGAIN) // It takes nothing, and would be waited for as long by each of the others.
            std::for_each(first + std::exchange(done, count), first + count,
                          [](OutgoingPacket& packet) { packet.error = EAGAIN; });
        else if (errno != EINTR)
            first[done++].error = errno;
    }
}

int PacketSockets::WhyNoWayTo(const Zone& zone) {
    const int socket = OpenSocket(zone.route);
    int error = socket < 0 ? errno : 0;
    const auto* address = reinterpret_cast<const sockaddr*>(&zone.address); // NOLINT(*-reinterpret-cast)
    if (socket >= 0 && connect(socket, address, zone.addressLength) != 0)
        error = errno;
    if (socket >= 0)
        close(socket);
    // Some addresses are sent to without a connection alone.
    const bool isNoWay =
        error == ENETUNREACH || error == EHOSTUNREACH || error == ENETDOWN || error == ENODEV;
    return isNoWay ? error : 0;
}

void PacketSockets::Rest() {
    for (const auto& [key, socket] : m_sockets)
        if (socket.descriptor >= 0)
            close(socket.descriptor);
    m_sockets.clear();
}

} // namespace controller::audio
