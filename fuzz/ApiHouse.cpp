#include "fuzz/ApiHouse.h"

#include "controller/http/ServeConnection.h"
#include "fuzz/Require.h"

#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/local/stream_protocol.hpp>
#include <boost/asio/write.hpp>

#include <array>
#include <chrono>

#include <fcntl.h>
#include <sys/socket.h>

namespace controller {

namespace {

constexpr const char* kState = "<announcements><announcement><id>1</id><name>Dinner</name>"
                               "<video><text>Dinner is ready</text></video>"
                               "<navigators><navigator><id>5</id></navigator></navigators>"
                               "</announcement></announcements>";

/// Small enough for inputs to reach them.
HttpLimits Limits() {
    HttpLimits limits;
    limits.headerBytes = 1024;
    limits.targetBytes = 256;
    limits.messageBytes = 256;
    limits.messagesPerMinute = 40;
    return limits;
}

/// The module stays loaded between houses.
const DriverModule& LoadedModule() {
    static const DriverModule module(MODULE);
    return module;
}

} // namespace

/// The client's end of one connection.
class ApiHouse::Client {
public:
    Client(boost::asio::io_context& context, int descriptor, const std::string& then)
        : m_socket(context, boost::asio::local::stream_protocol(), descriptor)
        , m_then(then) {}

    void Start(const std::string& bytes) {
        Write(bytes, m_then.empty());
        Read();
    }

    /// The head of the first reply is here, and `then` can be sent; once.
    [[nodiscard]] bool IsAnswered() { return !m_then.empty() && m_got.find("\r\n\r\n") != std::string::npos; }
    void SendRest() { Write(std::exchange(m_then, {}), true); }

    [[nodiscard]] bool IsOver() const { return m_isOver; }
    [[nodiscard]] const std::string& Got() const { return m_got; }

private:
    void Write(const std::string& bytes, bool isLast) {
        m_sending = bytes;
        boost::asio::async_write(m_socket, boost::asio::buffer(m_sending),
                                 [this, isLast](const boost::system::error_code&, std::size_t) {
                                     boost::system::error_code ignored; // the server may have gone
                                     if (isLast)
                                         m_socket.shutdown(m_socket.shutdown_send, ignored);
                                 });
    }
    void Read() {
        m_socket.async_read_some(boost::asio::buffer(m_bytes),
                                 [this](const boost::system::error_code& error, std::size_t size) {
                                     m_got.append(m_bytes.data(), size);
                                     m_isOver = static_cast<bool>(error);
                                     if (!error)
                                         Read();
                                 });
    }

    boost::asio::local::stream_protocol::socket m_socket;
    std::string m_then;
    std::string m_sending;
    std::string m_got;
    std::array<char, 16384> m_bytes{};
    bool m_isOver = false;
};

House ApiHouse::MakeHouse(const TemporaryFolder& folder) {
    House house;
    house.name = "House";
    house.mediaFolder = folder.Path();
    house.dataFolder = folder.Path() / "data";
    house.firstAnnouncements = folder.Write("announcements.xml", kState);
    house.rooms.push_back({12, "Kitchen", {"silent", ""}});
    house.navigators.push_back({5, "Tablet", 12});
    house.variables.push_back({9, 4, "outside", "cold"});
    return house;
}

ApiHouse::ApiHouse()
    : m_nowhere(::open("/dev/null", O_WRONLY | O_CLOEXEC))
    , m_log(m_nowhere, Severity::Error, Log::Form::Plain)
    , m_household(MakeHouse(m_folder), {MODULE, false, &m_engine}, m_log)
    , m_parts(m_household.Parts())
    , m_api(m_parts, &FindAsset)
    , m_connections(std::make_shared<Connections>(m_parts.driver.Context(), Limits())) {
    (void)LoadedModule();
    m_household.Start();
    m_log.SetListener([](Severity severity, const std::string& line) {
        Require(severity != Severity::Error, line.c_str());
    });
}

std::string ApiHouse::Converse(const std::string& bytes, const std::string& then) {
    std::array<int, 2> ends{};
    Require(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends.data()) == 0,
            "sockets");
    auto& context = m_parts.driver.Context();
    // Answers may come from other threads.
    const auto work = boost::asio::make_work_guard(context);
    Client client(context, ends[1], then);
    HttpSocket socket(context.get_executor());
    socket.assign(boost::asio::ip::tcp::v4(), ends[0]);
    ServeConnection(std::move(socket), m_connections->Take(boost::asio::ip::address_v4::loopback()), m_api,
                    nullptr);
    client.Start(bytes);
    while (!client.IsOver() || m_connections->Size() > 0) {
        Require(context.run_one_for(std::chrono::seconds(10)) > 0,
                "a connection ends when its client has gone");
        if (client.IsAnswered()) {
            m_parts.feed.Publish(events::VariableChanged{9, 4, "warm"});
            m_parts.feed.Publish(events::PopupShown{1, 5, "Dinner", "", std::chrono::seconds(1), true});
            client.SendRest();
        }
    }
    m_parts.announcements.Check(); // what differs is an error in the log, which none may be
    return client.Got();
}

} // namespace controller
