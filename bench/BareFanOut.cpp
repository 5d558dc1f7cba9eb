// What the WebSocket library itself needs to hand one message to many connections: the floor of
// `popup_fan_out`, measured in the same run. Prints milliseconds, one round a line.
//
//     bare_fan_out CONNECTIONS ROUNDS

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/websocket.hpp>

#include <array>
#include <chrono>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <arpa/inet.h>
#include <sys/epoll.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

using boost::asio::ip::tcp;
using Clock = std::chrono::steady_clock;
using Socket = boost::asio::basic_stream_socket<tcp, boost::asio::io_context::executor_type>;
using WebSocket = boost::beast::websocket::stream<Socket>;

void Check(bool isDone, const char* what) {
    if (!isDone)
        throw std::runtime_error(what);
}

/// As long as the message that shows a popup.
const std::string& Message() {
    static const std::string message(260, 'x');
    return message;
}

/// The pages: sockets that ask without a pause, as those of `popup_fan_out` do.
class Pages {
public:
    Pages() = default;
    Pages(const Pages&) = delete;
    Pages& operator=(const Pages&) = delete;
    ~Pages() {
        for (const int page : m_pages)
            ::close(page);
        ::close(m_poll);
    }

    /// Connects one more, which asks for a WebSocket.
    void Add(std::uint16_t port) {
        const int page = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        m_pages.push_back(page);
        sockaddr_in server{};
        server.sin_family = AF_INET;
        server.sin_port = htons(port);
        server.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        Check(::connect(page, reinterpret_cast<const sockaddr*>(&server), sizeof server) == 0,
              "cannot connect");
        static constexpr char kUpgrade[] =
            "GET / HTTP/1.1\r\nHost: 127.0.0.1\r\nConnection: Upgrade\r\nUpgrade: websocket\r\n"
            "Sec-WebSocket-Version: 13\r\nSec-WebSocket-Key: AAAAAAAAAAAAAAAAAAAAAA==\r\n\r\n";
        Check(::send(page, kUpgrade, sizeof kUpgrade - 1, MSG_NOSIGNAL) > 0, "cannot send");
    }

    /// The last one's answer is on its way.
    void Accepted() {
        std::array<char, 4096> answer{};
        Check(::recv(m_pages.back(), answer.data(), answer.size(), 0) > 0, "cannot receive");
        epoll_event event{};
        event.events = EPOLLIN;
        event.data.fd = m_pages.back();
        Check(::epoll_ctl(m_poll, EPOLL_CTL_ADD, m_pages.back(), &event) == 0, "cannot wait");
    }

    /// Waits until every one has its message.
    [[nodiscard]] Clock::time_point ReceiveAll() const {
        std::array<epoll_event, 256> events{};
        std::array<char, 4096> bytes{};
        for (std::size_t received = 0; received < m_pages.size();) {
            const int ready = ::epoll_wait(m_poll, events.data(), events.size(), 0);
            for (int index = 0; index < ready; ++index, ++received)
                Check(::recv(events[static_cast<std::size_t>(index)].data.fd, bytes.data(), bytes.size(), 0) >
                          0,
                      "cannot receive");
        }
        return Clock::now();
    }

private:
    std::vector<int> m_pages;
    int m_poll = ::epoll_create1(EPOLL_CLOEXEC);
};

class Server {
public:
    Server(Pages& pages, std::size_t connections) {
        boost::asio::basic_socket_acceptor<tcp, boost::asio::io_context::executor_type> acceptor(
            m_context, tcp::endpoint(boost::asio::ip::address_v4::loopback(), 0));
        while (m_sockets.size() < connections) {
            pages.Add(acceptor.local_endpoint().port());
            Socket socket(m_context);
            acceptor.accept(socket);
            socket.set_option(tcp::no_delay(true));
            m_sockets.push_back(std::make_unique<WebSocket>(std::move(socket)));
            m_sockets.back()->accept();
            m_sockets.back()->auto_fragment(false);
            pages.Accepted();
        }
    }

    /// Sends every page the message; gives when it began.
    Clock::time_point SendAll() {
        const auto start = Clock::now();
        for (const auto& socket : m_sockets)
            socket->async_write(boost::asio::buffer(Message()),
                                [](const boost::system::error_code& error, std::size_t /*size*/) {
                                    Check(!error, "cannot send");
                                });
        m_context.restart();
        m_context.run();
        return start;
    }

private:
    boost::asio::io_context m_context{1};
    std::vector<std::unique_ptr<WebSocket>> m_sockets;
};

double Round(Server& server, const Pages& pages) {
    Clock::time_point end;
    std::thread receiving([&] { end = pages.ReceiveAll(); });
    // Until the other thread waits.
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    const auto start = server.SendAll();
    receiving.join();
    return std::chrono::duration<double, std::milli>(end - start).count();
}

void RaiseDescriptorLimit() {
    rlimit files{};
    (void)::getrlimit(RLIMIT_NOFILE, &files);
    files.rlim_cur = files.rlim_max;
    (void)::setrlimit(RLIMIT_NOFILE, &files); // a lower limit is told when it is met
}

} // namespace

int main(int argc, char** argv) {
    try {
        Check(argc == 3, "bare_fan_out CONNECTIONS ROUNDS");
        RaiseDescriptorLimit();
        Pages pages;
        Server server(pages, std::stoul(argv[1]));
        for (unsigned long rounds = std::stoul(argv[2]); rounds > 0; --rounds)
            std::printf("%.3f\n", Round(server, pages));
        return 0;
    } catch (const std::exception& error) {
        (void)std::fprintf(stderr, "bare_fan_out: %s\n", error.what());
        return 1;
    }
}
