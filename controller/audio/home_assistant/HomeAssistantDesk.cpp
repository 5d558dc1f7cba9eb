#include "controller/audio/home_assistant/HomeAssistantDesk.h"

#include "controller/audio/home_assistant/HomeAssistantPlay.h"

#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/ssl/context.hpp>

#include <algorithm>
#include <utility>

namespace controller::audio {

namespace {

/// The certificates that this machine trusts; SSL_CERT_FILE names others.
boost::asio::ssl::context TrustingThisMachine() {
    boost::asio::ssl::context tls(boost::asio::ssl::context::tls_client);
    boost::system::error_code error; // Without them no server is trusted, and each call says so.
    tls.set_default_verify_paths(error);
    tls.set_verify_mode(boost::asio::ssl::verify_peer);
    return tls;
}

} // namespace

struct HomeAssistantDesk::Engine {
    boost::asio::io_context context{1};
    boost::asio::executor_work_guard<boost::asio::io_context::executor_type> work{context.get_executor()};
    boost::asio::ssl::context tls = TrustingThisMachine();
    NameSearch names{context};
};

HomeAssistantDesk::HomeAssistantDesk(const HouseLimits& limits)
    : m_limits(limits)
    , m_engine(std::make_unique<Engine>())
    , m_means{m_engine->context, m_engine->tls, m_engine->names} {}

HomeAssistantDesk::~HomeAssistantDesk() {
    Close();
}

void HomeAssistantDesk::Post(std::function<void()> work) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_isClosed)
        return;
    if (!m_thread.joinable())
        m_thread = std::thread([this] { m_engine->context.run(); });
    boost::asio::post(m_engine->context, std::move(work));
}

void HomeAssistantDesk::Enter(const std::shared_ptr<HomeAssistantPlay>& play) {
    m_plays.erase(
        std::remove_if(m_plays.begin(), m_plays.end(), [](const auto& one) { return one.expired(); }),
        m_plays.end());
    m_plays.push_back(play);
}

void HomeAssistantDesk::Close() {
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (std::exchange(m_isClosed, true))
            return;
    }
    if (!m_thread.joinable())
        return;
    boost::asio::post(m_engine->context, [this] {
        for (const auto& one : m_plays)
            if (const auto play = one.lock())
                play->Abort();
        m_engine->names.Close();
        m_engine->work.reset();
    });
    m_thread.join();
}

} // namespace controller::audio
