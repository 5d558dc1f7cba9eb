#include "controller/audio/home_assistant/NameSearch.h"

#include "controller/driver/HostAddresses.h"

#include <boost/asio/post.hpp>

#include <cstring>
#include <mutex>
#include <system_error>
#include <thread>

#include <netdb.h>

namespace controller::audio {

namespace {

NameSearch::Endpoints EndpointsIn(const HostAddresses& found) {
    NameSearch::Endpoints endpoints;
    for (const addrinfo* one = found.addresses.get(); one != nullptr; one = one->ai_next) {
        boost::asio::ip::tcp::endpoint endpoint;
        endpoint.resize(one->ai_addrlen);
        std::memcpy(endpoint.data(), one->ai_addr, one->ai_addrlen);
        endpoints.push_back(endpoint);
    }
    return endpoints;
}

} // namespace

struct NameSearch::Gate {
    std::mutex mutex;
    NameSearch* search = nullptr; ///< null: closed
};

NameSearch::NameSearch(boost::asio::io_context& context)
    : m_context(context)
    , m_gate(std::make_shared<Gate>()) {
    m_gate->search = this;
}

NameSearch::~NameSearch() {
    Close();
}

void NameSearch::Close() {
    const std::lock_guard<std::mutex> lock(m_gate->mutex);
    m_gate->search = nullptr;
    m_waiting.clear();
}

void NameSearch::Find(const std::string& host, std::uint16_t port, Found found) {
    const Place place{host, port};
    auto& waiting = m_waiting[place];
    waiting.push_back(std::move(found));
    if (waiting.size() > 1)
        return;
    const auto search = [place, gate = m_gate] {
        const HostAddresses answer = FindAddresses(place.first, place.second, AddressForm::Any);
        const auto tell = [gate, place, answer] {
            if (gate->search != nullptr) // This thread is the one that closes it.
                gate->search->Answer(place, EndpointsIn(answer), answer.error);
        };
        const std::lock_guard<std::mutex> lock(gate->mutex);
        if (gate->search != nullptr)
            boost::asio::post(gate->search->m_context, tell);
    };
    try {
        std::thread(search).detach();
    } catch (const std::system_error& error) {
        boost::asio::post(m_context, [gate = m_gate, place, what = std::string(error.what())] {
            if (gate->search != nullptr)
                gate->search->Answer(place, {}, what);
        });
    }
}

void NameSearch::Answer(const Place& place, const Endpoints& endpoints, const std::string& error) {
    const auto waiting = std::move(m_waiting[place]);
    m_waiting.erase(place);
    for (const Found& found : waiting)
        found(endpoints, error);
}

} // namespace controller::audio
