#include "controller/speech/HostLookup.h"

#include "controller/speech/SpeechError.h"

#include <exception>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include <netdb.h>
#include <sys/socket.h>

namespace controller {

namespace {

/// `flags`: as `getaddrinfo` takes them.
HostLookup::Answer LookUp(const std::string& host, std::uint16_t port, int flags) {
    addrinfo wanted{};
    wanted.ai_socktype = SOCK_STREAM;
    wanted.ai_flags = flags;
    addrinfo* found = nullptr;
    const int error = ::getaddrinfo(host.c_str(), std::to_string(port).c_str(), &wanted, &found);
    if (error != 0)
        return {nullptr, ::gai_strerror(error)};
    return {std::shared_ptr<const addrinfo>(
                found, [](const addrinfo* all) { ::freeaddrinfo(const_cast<addrinfo*>(all)); }), // NOLINT
            ""};
}

} // namespace

struct HostLookup::Asked {
    StopSignal isAnswered;
    std::mutex mutex;
    std::optional<Answer> answer;
};

HostLookup::HostLookup(std::string host, std::uint16_t port, Ask ask)
    : m_host(std::move(host))
    , m_port(port)
    , m_ask(std::move(ask)) {}

HostLookup::Answer HostLookup::AskMachine(const std::string& host, std::uint16_t port) {
    return LookUp(host, port, 0);
}

void HostLookup::Begin() {
    try {
        m_asked = std::make_shared<Asked>();
        std::thread([asked = m_asked, ask = m_ask, host = m_host, port = m_port] {
            Answer answer = ask(host, port);
            const std::lock_guard lock(asked->mutex);
            asked->answer = std::move(answer);
            asked->isAnswered.Give();
        }).detach();
    } catch (const std::system_error& error) {
        m_asked = nullptr;
        throw SpeechError("cannot be reached: " + m_host + ": it cannot be looked up: " + error.what());
    }
}

std::shared_ptr<const addrinfo> HostLookup::Find(const Patience& patience) {
    if (auto number = LookUp(m_host, m_port, AI_NUMERICHOST).addresses)
        return number;
    if (!m_asked)
        Begin();
    std::vector<pollfd> answered{{m_asked->isAnswered.Descriptor(), POLLIN, 0}};
    do
        patience.Wait(answered);
    while (answered.front().revents == 0);
    const auto asked = std::exchange(m_asked, nullptr);
    const std::lock_guard lock(asked->mutex);
    if (!asked->answer->addresses)
        throw SpeechError("cannot be reached: " + m_host + ": " + asked->answer->error);
    return asked->answer->addresses;
}

} // namespace controller
