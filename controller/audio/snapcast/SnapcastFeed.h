#pragma once

#include "controller/audio/Timeline.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/steady_timer.hpp>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace controller::audio {

/// One announcement's sound for all rooms that hear one stream of one server: the clip as the server's tcp
/// source takes it, in real time, silence behind it. It leaves early, as far as other rooms' silence allows,
/// so that it is heard in step with them. One thread, that of the context; whoever else calls posts to it.
class SnapcastFeed final : public std::enable_shared_from_this<SnapcastFeed> {
public:
    using Clock = Timeline::Clock;

    /// What becomes of one room. Called on the feed's thread.
    struct Listener {
        std::function<void()> late;            ///< A clip had begun before.
        std::function<void(bool isCut)> ended; ///< `isCut`: the announcement was stopped.
        std::function<void(const std::string& reason)> failed;
    };

    /// Clients play what has come so much before the server's buffer is over.
    static constexpr std::chrono::milliseconds kEarlier{29};
    static constexpr std::chrono::milliseconds kStep{20};
    /// As far ahead of the clock it writes: the server takes it at its own pace.
    static constexpr std::chrono::milliseconds kAhead{60};
    static constexpr std::chrono::milliseconds kTail{200};
    static constexpr std::chrono::milliseconds kPatience{1400};

    struct Order {
        std::shared_ptr<Timeline> timeline;
        boost::asio::ip::tcp::endpoint endpoint;
        std::chrono::milliseconds buffer{1000};
        std::string place; ///< of the source, for people
    };

    SnapcastFeed(std::shared_ptr<boost::asio::io_context> context, Order order);

    void Add(std::shared_ptr<RoomSlot> slot, Listener listener);

    /// The room hears it no more. Where it was the last, what is on its way is dropped.
    void Remove(const std::shared_ptr<RoomSlot>& slot);
    void Close();

private:
    struct Room {
        std::shared_ptr<RoomSlot> slot;
        Listener listener;
    };

    void Connect();
    void OnConnected();
    void WatchForEnd();
    void Open(const Room& room);
    void Tick();
    [[nodiscard]] bool Begin(Clock::time_point now);
    void Feed(Clock::time_point now);
    void Append(std::int64_t frames);
    void Write();
    void TellRooms(Clock::time_point now);
    void End(bool isCut);
    void DropUnheard();
    void Fail(const std::string& reason);
    void StartTimer(std::chrono::milliseconds delay, void (SnapcastFeed::*then)());
    [[nodiscard]] bool HasEnded(Clock::time_point now) const;

    const std::shared_ptr<boost::asio::io_context> m_context;
    const Order m_order;
    boost::asio::ip::tcp::socket m_socket;
    boost::asio::steady_timer m_timer;
    std::vector<Room> m_rooms;
    bool m_isConnecting = false;
    bool m_isConnected = false;
    bool m_isClosed = false;
    bool m_isLate = false; ///< The clip was there before the connection.
    std::optional<Placement> m_clip;
    Clock::time_point m_zero;  ///< When the clip's first frame is written, in real time.
    std::int64_t m_next = 0;   ///< The frame of the clip that is written next.
    std::vector<char> m_bytes; ///< to be written
    std::vector<char> m_writing;
    std::vector<float> m_frames;
    char m_read = 0;
};

} // namespace controller::audio
