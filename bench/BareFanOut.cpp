// What the machine itself needs to hand one message to many connections: the floor of `popup_fan_out`,
// measured in the same run. Prints milliseconds, one round a line.
//
//     bare_fan_out CONNECTIONS ROUNDS

#include <array>
#include <chrono>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/epoll.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;

/// As long as the message that shows a popup.
constexpr std::array<char, 250> kMessage{};

struct Connections {
    std::vector<int> senders;
    int receivers = ::epoll_create1(EPOLL_CLOEXEC);
};

void Check(bool isDone, const char* what) {
    if (!isDone)
        throw std::runtime_error(what);
}

Connections Connect(std::size_t count) {
    rlimit files{};
    (void)::getrlimit(RLIMIT_NOFILE, &files);
    files.rlim_cur = files.rlim_max;
    (void)::setrlimit(RLIMIT_NOFILE, &files);
    Connections connections;
    const int listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    auto* name = reinterpret_cast<sockaddr*>(&address);
    socklen_t length = sizeof address;
    Check(::bind(listener, name, length) == 0 && ::listen(listener, 16) == 0, "cannot listen");
    Check(::getsockname(listener, name, &length) == 0, "cannot listen");
    while (connections.senders.size() < count) {
        const int receiver = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        Check(::connect(receiver, name, length) == 0, "cannot connect");
        const int sender = ::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
        const int yes = 1;
        Check(::setsockopt(sender, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes) == 0, "cannot connect");
        epoll_event event{};
        event.events = EPOLLIN;
        event.data.fd = receiver;
        Check(::epoll_ctl(connections.receivers, EPOLL_CTL_ADD, receiver, &event) == 0, "cannot connect");
        connections.senders.push_back(sender);
    }
    return connections;
}

/// Asks without a pause, as `popup_fan_out` does.
Clock::time_point ReceiveAll(const Connections& connections) {
    std::array<epoll_event, 256> events{};
    std::array<char, 4096> bytes{};
    for (std::size_t received = 0; received < connections.senders.size();) {
        const int ready = ::epoll_wait(connections.receivers, events.data(), events.size(), 0);
        for (int index = 0; index < ready; ++index, ++received)
            Check(::recv(events[static_cast<std::size_t>(index)].data.fd, bytes.data(), bytes.size(), 0) > 0,
                  "cannot receive");
    }
    return Clock::now();
}

double Round(const Connections& connections) {
    Clock::time_point end;
    std::thread receiving([&] { end = ReceiveAll(connections); });
    // Until the other thread waits.
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    const auto start = Clock::now();
    for (const int sender : connections.senders)
        Check(::send(sender, kMessage.data(), kMessage.size(), MSG_NOSIGNAL) > 0, "cannot send");
    receiving.join();
    return std::chrono::duration<double, std::milli>(end - start).count();
}

} // namespace

int main(int argc, char** argv) {
    try {
        Check(argc == 3, "bare_fan_out CONNECTIONS ROUNDS");
        const Connections connections = Connect(std::stoul(argv[1]));
        for (unsigned long rounds = std::stoul(argv[2]); rounds > 0; --rounds)
            std::printf("%.3f\n", Round(connections));
        return 0;
    } catch (const std::exception& error) {
        (void)std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
