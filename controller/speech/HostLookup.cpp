#include "controller/speech/HostLookup.h"

#include "controller/speech/SpeechError.h"

#include <exception>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace controller {

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
    return FindAddresses(host, port, AddressForm::Any);
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
    if (auto number = FindAddresses(m_host, m_port, AddressForm::Numeric).addresses)
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
