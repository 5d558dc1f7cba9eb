#include "controller/audio/snapcast/SnapcastDesk.h"

#include "controller/audio/snapcast/SnapcastEntries.h"

#include <boost/asio/ip/address.hpp>
#include <boost/asio/post.hpp>

#include <algorithm>
#include <exception>
#include <system_error>
#include <utility>

namespace controller::audio {

SnapcastDesk::~SnapcastDesk() = default;

void SnapcastDesk::Begin(IScheduler& driver, Log& log, Borrowings& borrowings) {
    m_driver = &driver;
    m_log = &log;
    m_borrowings = &borrowings;
    for (const Borrowed& entry : borrowings.Of(snapcast_entries::kKind)) {
        const std::string server = snapcast_entries::ServerOf(entry);
        try {
            StartThread();
            (void)LoansOf(ReadSnapcastHost(server), server); // It gives back by itself.
        } catch (const std::exception& error) {
            log.Error("What the Snapcast server " + server + " had is not given back: " + error.what());
        }
    }
}

void SnapcastDesk::StartThread() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_thread)
        m_thread = std::make_unique<SnapcastThread>();
}

void SnapcastDesk::Close() {
    std::vector<std::future<void>> done;
    for (auto& [name, server] : m_servers) {
        server.loans->GiveBackNow();
        done.push_back(server.control->Done());
    }
    const auto end = std::chrono::steady_clock::now() + kFarewell;
    for (const auto& one : done)
        (void)one.wait_until(end); // What is not done by then the next start finds written down.
    for (const Feed& feed : m_feeds)
        if (const auto open = feed.feed.lock())
            Do(open, [](SnapcastFeed& ending) { ending.Close(); });
    m_servers.clear();
    m_driver = nullptr;
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_thread = nullptr;
}

bool SnapcastDesk::HasGivenBack() const {
    return std::all_of(m_servers.begin(), m_servers.end(),
                       [](const auto& server) { return server.second.loans->HasGivenBack(); });
}

SnapcastLoans* SnapcastDesk::LoansOf(const SnapcastHost& host, const std::string& server) {
    if (m_driver == nullptr)
        return nullptr;
    Server& found = m_servers[server];
    if (!found.loans) {
        found.control = std::make_unique<SnapcastControl>(m_thread->Context(), host, m_mailbox,
                                                          [this, server](const SnapcastState& state) {
                                                              const auto place = m_servers.find(server);
                                                              if (place != m_servers.end())
                                                                  place->second.loans->OnState(state);
                                                          });
        found.loans =
            std::make_unique<SnapcastLoans>(*m_driver, *m_log, *m_borrowings, *found.control, server);
    }
    return found.loans.get();
}

std::shared_ptr<SnapcastFeed> SnapcastDesk::FeedOf(const std::shared_ptr<Timeline>& timeline,
                                                   const SnapcastPlace& place,
                                                   const SnapcastState& state) {
    const std::uint16_t port = place.sourcePort.value_or(state.FindStream(place.stream)->port);
    const std::string source = place.Server() + " " + std::to_string(port);
    m_feeds.erase(
        std::remove_if(m_feeds.begin(), m_feeds.end(), [](const Feed& feed) { return feed.feed.expired(); }),
        m_feeds.end());
    for (const Feed& feed : m_feeds)
        if (feed.timeline.lock() == timeline && feed.source == source)
            if (auto open = feed.feed.lock())
                return open;
    boost::system::error_code unusable; // Then it is the address of nobody, which cannot be reached.
    const auto address = boost::asio::ip::make_address(state.address, unusable);
    auto feed = std::make_shared<SnapcastFeed>(
        m_thread->Context(),
        SnapcastFeed::Order{timeline,
                            {address, port},
                            place.buffer,
                            "the source of the stream \"" + place.stream + "\" at port " +
                                std::to_string(port) + " of the Snapcast server " + place.Server()});
    m_feeds.push_back({timeline, source, feed});
    return feed;
}

void SnapcastDesk::Do(const std::shared_ptr<SnapcastFeed>& feed, FeedTask task) {
    boost::asio::post(*m_thread->Context(), [feed, task = std::move(task)] { task(*feed); });
}

} // namespace controller::audio
