#include "tests/controller/audio/snapcast/StandInServer.h"

#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/read_until.hpp>
#include <boost/asio/streambuf.hpp>
#include <boost/asio/write.hpp>
#include <nlohmann/json.hpp>

#include <array>
#include <future>
#include <istream>
#include <set>
#include <thread>
#include <utility>

namespace controller::audio::test {

namespace {

using boost::asio::ip::tcp;
using boost::system::error_code;
using Json = nlohmann::json;

Json StatusOf(const SnapcastModel& model, std::uint16_t port) {
    Json groups = Json::array();
    for (const SnapcastGroup& group : model.state.groups) {
        Json clients = Json::array();
        for (const SnapcastClient& client : group.clients)
            clients.push_back(
                {{"id", client.id},
                 {"connected", client.isConnected},
                 {"config",
                  {{"volume", {{"percent", client.volume.percent}, {"muted", client.volume.isMuted}}}}}});
        groups.push_back(
            {{"id", group.id}, {"muted", group.isMuted}, {"stream_id", group.stream}, {"clients", clients}});
    }
    Json streams = Json::array();
    for (const SnapcastStream& stream : model.state.streams)
        streams.push_back({{"id", stream.id},
                           {"uri",
                            {{"scheme", stream.scheme},
                             {"host", "127.0.0.1:" + std::to_string(port)},
                             {"query", {{"sampleformat", stream.format}}}}}});
    return {{"server", {{"groups", groups}, {"streams", streams}}}};
}

std::string Apply(SnapcastModel& model, const std::string& method, const Json& params) {
    const auto id = params.at("id").get<std::string>();
    if (method == "Client.SetVolume")
        return model.SetVolume(id, {params.at("volume").at("percent"), params.at("volume").at("muted")});
    if (method == "Group.SetStream")
        return model.SetStream(id, params.at("stream_id"));
    if (method == "Group.SetMute")
        return model.SetMute(id, params.at("mute"));
    return model.SetClients(id, params.at("clients").get<std::vector<std::string>>());
}

} // namespace

struct StandInServer::Connection {
    explicit Connection(tcp::socket theSocket) : socket(std::move(theSocket)) {}
    tcp::socket socket;
    boost::asio::streambuf read;
    std::array<char, 4096> sound{};
};

struct StandInServer::Parts {
    using Pointer = std::shared_ptr<Connection>;

    boost::asio::io_context context;
    boost::asio::executor_work_guard<boost::asio::io_context::executor_type> work{context.get_executor()};
    std::unique_ptr<tcp::acceptor> control;
    std::unique_ptr<tcp::acceptor> source;
    std::uint16_t controlPort = 0;
    std::uint16_t sourcePort = 0;
    std::set<Pointer> connections; ///< of the control
    std::set<Pointer> feeds;
    mutable std::mutex mutex; ///< of what follows
    Manner manner = Manner::Usual;
    SnapcastModel model;
    std::string bytes;
    unsigned feedCount = 0;
    std::thread thread;

    /// On the thread, and waits for it.
    void Do(const std::function<void()>& what) {
        std::promise<void> done;
        boost::asio::post(context, [&] {
            what();
            done.set_value();
        });
        done.get_future().wait();
    }

    Manner CurrentManner() const {
        const std::lock_guard<std::mutex> lock(mutex);
        return manner;
    }

    void Open() {
        const auto open = [this](std::unique_ptr<tcp::acceptor>& acceptor, std::uint16_t& port) {
            acceptor = std::make_unique<tcp::acceptor>(
                context, tcp::endpoint(boost::asio::ip::address_v4::loopback(), port));
            port = acceptor->local_endpoint().port();
        };
        open(control, controlPort);
        open(source, sourcePort);
        AcceptControl();
        AcceptSource();
    }

    void AcceptControl() {
        control->async_accept([this](const error_code& error, tcp::socket socket) {
            if (error)
                return;
            const auto connection = std::make_shared<Connection>(std::move(socket));
            connections.insert(connection);
            ReadLine(connection);
            AcceptControl();
        });
    }

    void ReadLine(const Pointer& connection) {
        boost::asio::async_read_until(connection->socket, connection->read, '\n',
                                      [this, connection](const error_code& error, std::size_t /*bytes*/) {
                                          if (error) {
                                              connections.erase(connection);
                                              return;
                                          }
                                          std::istream stream(&connection->read);
                                          std::string line;
                                          std::getline(stream, line);
                                          Answer(connection, Json::parse(line));
                                          ReadLine(connection);
                                      });
    }

    static void Write(const Pointer& connection, const std::string& line) {
        error_code ignored; // The other side may have gone.
        boost::asio::write(connection->socket, boost::asio::buffer(line + "\r\n"), ignored);
    }

    void Answer(const Pointer& connection, const Json& asked) {
        const auto now = CurrentManner();
        const auto method = asked.at("method").get<std::string>();
        const bool isStatus = method == "Server.GetStatus";
        const bool isChange = method.find(".Set") != std::string::npos;
        if (now == Manner::Hangs)
            return;
        if (now == Manner::TalksNonsense)
            return Write(connection, "SSH-2.0-nonsense");
        if (now == Manner::NestsDeeply)
            return Write(connection, R"({"jsonrpc":"2.0","id":)" + asked.at("id").dump() + R"(,"result":)" +
                                         std::string(200'000, '[') + std::string(200'000, ']') + "}");
        if (isChange && now == Manner::ClosesAtChanges)
            return connection->socket.close();
        Json answer{{"jsonrpc", "2.0"}, {"id", asked.at("id")}, {"result", Json::object()}};
        std::string error;
        const std::lock_guard<std::mutex> lock(mutex);
        if ((isStatus && now == Manner::RefusesStatus) || (isChange && now == Manner::RefusesChanges))
            error = "Not today";
        else if (isStatus)
            answer["result"] = StatusOf(model, sourcePort);
        else if (isChange)
            error = Apply(model, method, asked.at("params"));
        if (isStatus && now == Manner::RefusesWithoutWords) {
            answer.erase("result");
            answer["error"] = {{"code", "none"}, {"message", 7}, {"data", Json::array()}};
        }
        if (!error.empty()) {
            answer.erase("result");
            answer["error"] = {{"code", -32603}, {"message", "Internal error"}, {"data", error}};
        }
        Write(connection, answer.dump());
        if (isChange)
            Tell(connection);
    }

    /// All but the one who has changed it.
    void Tell(const Pointer& changer) {
        for (const Pointer& other : connections)
            if (other != changer)
                Write(other, R"({"jsonrpc":"2.0","method":"Server.OnUpdate","params":{}})");
    }

    void AcceptSource() {
        source->async_accept([this](const error_code& error, tcp::socket socket) {
            if (error)
                return;
            if (CurrentManner() != Manner::IgnoresSource) {
                const auto feed = std::make_shared<Connection>(std::move(socket));
                feeds.insert(feed);
                const std::lock_guard<std::mutex> lock(mutex);
                ++feedCount;
                ReadSound(feed);
            }
            AcceptSource();
        });
    }

    void ReadSound(const Pointer& feed) {
        feed->socket.async_read_some(boost::asio::buffer(feed->sound),
                                     [this, feed](const error_code& error, std::size_t size) {
                                         if (error) {
                                             feeds.erase(feed);
                                             return;
                                         }
                                         const std::lock_guard<std::mutex> lock(mutex);
                                         bytes.append(feed->sound.data(), size);
                                         ReadSound(feed);
                                     });
    }

    void Close() {
        control = nullptr;
        source = nullptr;
        for (const auto* all : {&connections, &feeds})
            for (const Pointer& connection : *all)
                connection->socket.close();
    }
};

StandInServer::StandInServer(Manner manner) : m_parts(std::make_unique<Parts>()) {
    m_parts->manner = manner;
    m_parts->Open();
    m_parts->thread = std::thread([this] { m_parts->context.run(); });
}

StandInServer::~StandInServer() {
    m_parts->Do([this] { m_parts->Close(); });
    m_parts->context.stop();
    m_parts->thread.join();
}

std::string StandInServer::Output(const std::string& client) const {
    return "snapcast: " + client + " server=127.0.0.1:" + std::to_string(m_parts->controlPort) +
           " buffer_ms=200";
}

void StandInServer::Kill() {
    m_parts->Do([this] { m_parts->Close(); });
}

void StandInServer::Start() {
    m_parts->Do([this] { m_parts->Open(); });
}

void StandInServer::SetManner(Manner manner) {
    const std::lock_guard<std::mutex> lock(m_parts->mutex);
    m_parts->manner = manner;
}

std::string StandInServer::Text() const {
    const std::lock_guard<std::mutex> lock(m_parts->mutex);
    return m_parts->model.Text();
}

void StandInServer::Change(const std::function<void(SnapcastModel&)>& change) {
    m_parts->Do([&] {
        const std::lock_guard<std::mutex> lock(m_parts->mutex);
        change(m_parts->model);
        m_parts->Tell(nullptr);
    });
}

std::vector<short> StandInServer::Heard() const {
    const std::lock_guard<std::mutex> lock(m_parts->mutex);
    std::vector<short> left;
    for (std::size_t place = 0; place + 4 <= m_parts->bytes.size(); place += 4)
        left.push_back(static_cast<short>(
            static_cast<unsigned char>(m_parts->bytes[place]) |
            static_cast<unsigned>(static_cast<unsigned char>(m_parts->bytes[place + 1])) << 8U));
    return left;
}

unsigned StandInServer::Feeds() const {
    const std::lock_guard<std::mutex> lock(m_parts->mutex);
    return m_parts->feedCount;
}

} // namespace controller::audio::test
