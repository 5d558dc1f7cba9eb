#pragma once

#include "controller/audio/Borrowings.h"
#include "controller/audio/Mailbox.h"
#include "controller/audio/snapcast/SnapcastControl.h"
#include "controller/audio/snapcast/SnapcastFeed.h"
#include "controller/audio/snapcast/SnapcastLoans.h"
#include "controller/audio/snapcast/SnapcastPlace.h"
#include "controller/audio/snapcast/SnapcastThread.h"

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace controller::audio {

/// All Snapcast servers as the rooms use them, on one thread that begins with the first. Driver thread, where
/// nothing else is said.
class SnapcastDesk final {
public:
    /// So long the servers have at the end to do what they were told.
    static constexpr std::chrono::milliseconds kFarewell{500};

    explicit SnapcastDesk(std::shared_ptr<Mailbox> mailbox) : m_mailbox(std::move(mailbox)) {}
    SnapcastDesk(const SnapcastDesk&) = delete;
    SnapcastDesk& operator=(const SnapcastDesk&) = delete;
    ~SnapcastDesk();

    /// From now on rooms can be heard, and what a former run has left is given back. What is given is
    /// borrowed until `Close`.
    void Begin(IScheduler& driver, Log& log, Borrowings& borrowings);

    /// Gives back at once what is borrowed, and touches nothing any more.
    void Close();

    /// Whether nothing is left to be given back to any server.
    [[nodiscard]] bool HasGivenBack() const;

    /// @throws std::system_error when there is no thread. Any thread.
    void StartThread();

    /// Does it on the driver thread, as long as there is one. Any thread.
    void Post(Mailbox::Task task) { m_mailbox->Post(std::move(task)); }

    /// Null: nothing of other programs may be touched.
    [[nodiscard]] SnapcastLoans* LoansOf(const SnapcastHost& host, const std::string& server);

    /// The sound of this announcement for all rooms that hear that stream of the server.
    using FeedTask = std::function<void(SnapcastFeed& feed)>;
    [[nodiscard]] std::shared_ptr<SnapcastFeed>
    FeedOf(const std::shared_ptr<Timeline>& timeline, const SnapcastPlace& place, const SnapcastState& state);

    /// On the feed's thread.
    void Do(const std::shared_ptr<SnapcastFeed>& feed, FeedTask task);

private:
    struct Server {
        std::unique_ptr<SnapcastControl> control;
        std::unique_ptr<SnapcastLoans> loans;
    };
    struct Feed {
        std::weak_ptr<Timeline> timeline;
        std::string source;
        std::weak_ptr<SnapcastFeed> feed;
    };

    const std::shared_ptr<Mailbox> m_mailbox;
    IScheduler* m_driver = nullptr; ///< Null: it has not begun, or is closed.
    Log* m_log = nullptr;
    Borrowings* m_borrowings = nullptr;
    std::mutex m_mutex; ///< of the thread's start
    std::unique_ptr<SnapcastThread> m_thread;
    std::map<std::string, Server> m_servers;
    std::vector<Feed> m_feeds;
};

} // namespace controller::audio
