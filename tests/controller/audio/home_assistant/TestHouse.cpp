#include "tests/controller/audio/home_assistant/TestHouse.h"

#include <boost/asio/post.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/beast/http/write.hpp>

#include <utility>

namespace controller::audio::test {

namespace {

namespace http = boost::beast::http;
using boost::asio::ip::tcp;

} // namespace

std::string TestAddresses::Offer(std::shared_ptr<const std::string> file,
                                 std::chrono::milliseconds /*life*/) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_lastFile = std::move(file);
    std::string path = "/api/once/" + std::to_string(++m_offers) + ".wav";
    m_fetched[path] = false;
    return path;
}

void TestAddresses::Withdraw(const std::string& path) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_fetched.erase(path);
}

bool TestAddresses::WasFetched(const std::string& path) const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto place = m_fetched.find(path);
    return place != m_fetched.end() && place->second;
}

bool TestAddresses::Fetch(const std::string& path) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto place = m_fetched.find(path);
    if (place != m_fetched.end())
        place->second = true;
    return place != m_fetched.end();
}

std::size_t TestAddresses::Count() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_fetched.size();
}

std::shared_ptr<const std::string> TestAddresses::LastFile() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_lastFile;
}

TestHouse::TestHouse(Answer answer)
    : m_answer(std::move(answer))
    , m_acceptor(m_context, tcp::endpoint(boost::asio::ip::address_v4::loopback(), 0))
    , m_port(m_acceptor.local_endpoint().port()) {
    Accept();
    m_thread = std::thread([this] { m_context.run(); });
}

TestHouse::~TestHouse() {
    Die();
    m_context.stop();
    m_thread.join();
}

std::vector<HouseRequest> TestHouse::Asked() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_asked;
}

void TestHouse::Die() {
    boost::asio::post(m_context, [this] {
        boost::system::error_code ignored; // It may be closed already.
        m_acceptor.close(ignored);
        m_open.clear();
    });
}

void TestHouse::Accept() {
    m_acceptor.async_accept([this](const boost::system::error_code& error, tcp::socket socket) {
        if (error)
            return;
        Serve(std::move(socket));
        Accept();
    });
}

void TestHouse::Serve(tcp::socket socket) {
    boost::beast::flat_buffer buffer;
    http::request<http::string_body> request;
    boost::system::error_code error;
    http::read(socket, buffer, request, error);
    if (error)
        return;
    const HouseRequest asked{std::string(request.method_string()) + " " + std::string(request.target()),
                             std::string(request[http::field::authorization]), request.body()};
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_asked.push_back(asked);
    }
    const HouseReply reply = m_answer(asked);
    if (reply.then == HouseReply::Then::BreakOff)
        return;
    if (reply.then != HouseReply::Then::Nothing) {
        http::response<http::string_body> response(static_cast<http::status>(reply.status), 11);
        response.set(http::field::content_type, "application/json");
        response.body() = reply.body;
        response.keep_alive(reply.then == HouseReply::Then::Stay);
        response.prepare_payload();
        http::write(socket, response, error);
    }
    if (reply.then != HouseReply::Then::Close)
        m_open.push_back(std::move(socket));
}

} // namespace controller::audio::test
