#pragma once

#include "controller/audio/ISoundAddresses.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>

#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace controller::audio::test {

/// Keeps what is offered, and whether it was fetched.
class TestAddresses final : public ISoundAddresses {
public:
    [[nodiscard]] std::string Offer(std::shared_ptr<const std::string> file,
                                    std::chrono::milliseconds life) override;
    void Withdraw(const std::string& path) override;
    [[nodiscard]] bool WasFetched(const std::string& path) const override;
    [[nodiscard]] Served GetServed() const override { return {false, 8765}; }

    /// Whether there is something at the path; it has been fetched then.
    bool Fetch(const std::string& path);

    [[nodiscard]] std::size_t Count() const;
    [[nodiscard]] std::shared_ptr<const std::string> LastFile() const;

private:
    mutable std::mutex m_mutex;
    std::map<std::string, bool> m_fetched; ///< by path, of what is offered
    std::shared_ptr<const std::string> m_lastFile;
    int m_offers = 0;
};

/// What a server is asked, and what it does then.
struct HouseRequest {
    std::string line; ///< "GET /path"
    std::string authorization;
    std::string body;
};
struct HouseReply {
    enum class Then { Stay, Close, Nothing, BreakOff };
    unsigned status = 200;
    std::string body;
    Then then = Then::Stay;
};

/// A server of HTTP on a thread and a free port of its own; requests are answered one after the other.
class TestHouse final {
public:
    using Answer = std::function<HouseReply(const HouseRequest& request)>;

    explicit TestHouse(Answer answer);
    ~TestHouse();
    TestHouse(const TestHouse&) = delete;
    TestHouse& operator=(const TestHouse&) = delete;

    [[nodiscard]] std::uint16_t Port() const { return m_port; }
    [[nodiscard]] std::vector<HouseRequest> Asked() const;

    /// Ends every connection, and takes none any more.
    void Die();

private:
    void Accept();
    void Serve(boost::asio::ip::tcp::socket socket);

    const Answer m_answer;
    boost::asio::io_context m_context;
    boost::asio::ip::tcp::acceptor m_acceptor;
    std::uint16_t m_port = 0;
    std::vector<boost::asio::ip::tcp::socket> m_open; ///< its thread's
    mutable std::mutex m_mutex;
    std::vector<HouseRequest> m_asked;
    std::thread m_thread;
};

} // namespace controller::audio::test
