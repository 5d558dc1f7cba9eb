// Connects many pages of one navigator, plays an announcement several times, and prints for each play the
// milliseconds from its command to the last page that has the popup.
//
//     popup_fan_out PORT NAVIGATOR ANNOUNCEMENT PAGES PLAYS

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <sys/epoll.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kPatience{30};

int Connect(const std::string& port) {
    const int connection = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in server{};
    server.sin_family = AF_INET;
    server.sin_port = htons(static_cast<std::uint16_t>(std::stoul(port)));
    server.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const int yes = 1;
    (void)::setsockopt(connection, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
    if (::connect(connection, reinterpret_cast<const sockaddr*>(&server), sizeof server) != 0)
        throw std::runtime_error("cannot connect to port " + port);
    return connection;
}

void Send(int connection, const std::string& text) {
    if (::send(connection, text.data(), text.size(), MSG_NOSIGNAL) != static_cast<ssize_t>(text.size()))
        throw std::runtime_error("cannot send");
}

/// What is there, up to a message or two: clearing more than that for each page would be part of what is
/// measured.
std::string Receive(int connection, int flags) {
    std::array<char, 2048> bytes; // NOLINT(cppcoreguidelines-pro-type-member-init): filled next
    const ssize_t size = ::recv(connection, bytes.data(), bytes.size(), flags);
    if (size == 0)
        throw std::runtime_error("a connection was closed");
    return {bytes.data(), size > 0 ? static_cast<std::size_t>(size) : 0};
}

class Pages {
public:
    /// `navigators`: one, which all the pages show, or "2001-3000": each of them in turn.
    Pages(const std::string& port, const std::string& navigators, std::size_t count) {
        const auto dash = navigators.find('-');
        const unsigned long first = std::stoul(navigators);
        const unsigned long last =
            dash == std::string::npos ? first : std::stoul(navigators.substr(dash + 1));
        for (std::size_t page = 0; page < count; ++page) {
            const std::string navigator = std::to_string(first + page % (last - first + 1));
            const int connection = Connect(port);
            Send(connection,
                 "GET /api/navigators/" + navigator +
                     "/events HTTP/1.1\r\nHost: 127.0.0.1\r\nConnection: Upgrade\r\nUpgrade: websocket\r\n"
                     "Sec-WebSocket-Version: 13\r\nSec-WebSocket-Key: AAAAAAAAAAAAAAAAAAAAAA==\r\n\r\n");
            std::string text;
            while (text.find("\"state\"") == std::string::npos)
                text += Receive(connection, 0);
            epoll_event event{};
            event.events = EPOLLIN;
            event.data.u64 = page;
            (void)::epoll_ctl(m_poll, EPOLL_CTL_ADD, connection, &event);
            m_connections.push_back(connection);
            m_texts.emplace_back();
        }
    }
    Pages(const Pages&) = delete;
    Pages& operator=(const Pages&) = delete;
    ~Pages() {
        for (const int connection : m_connections)
            ::close(connection);
        ::close(m_poll);
    }

    /// Waits until every page has had the text, and forgets everything that came until then. Asks without a
    /// pause: the pages of a house are machines of their own, and nobody here has to be woken for each.
    Clock::time_point WaitForAll(const std::string& wanted) {
        std::vector<bool> has(m_connections.size());
        std::size_t missing = has.size();
        const auto end = Clock::now() + kPatience;
        while (missing > 0) {
            std::array<epoll_event, 256> events{};
            const int ready = ::epoll_wait(m_poll, events.data(), events.size(), 0);
            if (Clock::now() > end)
                throw std::runtime_error(std::to_string(missing) + " pages wait in vain for " + wanted);
            for (int index = 0; index < ready; ++index) {
                const std::size_t page = events[static_cast<std::size_t>(index)].data.u64;
                m_texts[page] += Receive(m_connections[page], MSG_DONTWAIT);
                if (has[page] || m_texts[page].find(wanted) == std::string::npos)
                    continue;
                has[page] = true;
                --missing;
            }
        }
        const auto now = Clock::now();
        for (std::string& text : m_texts)
            text.erase(0, text.find(wanted) + wanted.size());
        return now;
    }

private:
    int m_poll = ::epoll_create1(EPOLL_CLOEXEC);
    std::vector<int> m_connections;
    std::vector<std::string> m_texts;
};

void Run(const std::vector<std::string>& words) {
    rlimit files{};
    (void)::getrlimit(RLIMIT_NOFILE, &files);
    files.rlim_cur = files.rlim_max;
    (void)::setrlimit(RLIMIT_NOFILE, &files);
    Pages pages(words[0], words[1], std::stoul(words[3]));
    const int commands = Connect(words[0]);
    const std::string play =
        "POST /api/announcements/" + words[2] + "/play HTTP/1.1\r\nHost: 127.0.0.1\r\n\r\n";
    for (unsigned long count = std::stoul(words[4]); count > 0; --count) {
        const auto start = Clock::now();
        Send(commands, play);
        const std::chrono::duration<double, std::milli> taken = pages.WaitForAll("\"popup_shown\"") - start;
        if (Receive(commands, 0).find(" 202 ") == std::string::npos)
            throw std::runtime_error("the command was refused");
        std::printf("%.3f\n", taken.count());
        (void)pages.WaitForAll("\"popup_hidden\"");
        // The announcement lets go a moment after its popup.
        ::sleep(4);
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 6) {
        (void)std::fputs("popup_fan_out PORT NAVIGATOR[-NAVIGATOR] ANNOUNCEMENT PAGES PLAYS\n", stderr);
        return 2;
    }
    try {
        Run({argv + 1, argv + argc});
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        (void)std::fprintf(stderr, "popup_fan_out: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
