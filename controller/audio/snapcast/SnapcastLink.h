#pragma once

#include "controller/audio/snapcast/LineConnection.h"
#include "controller/audio/snapcast/SnapcastPlace.h"
#include "controller/audio/snapcast/SnapcastState.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/steady_timer.hpp>

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>

namespace controller::audio {

/// The control of one Snapcast server: two connections, since who changes something is not told of it. One
/// thread, that of the context; whoever else calls posts to it. It connects when it is asked something, and
/// again when it is asked after that was lost.
class SnapcastLink final : public std::enable_shared_from_this<SnapcastLink> {
public:
    using OnState = std::function<void(const SnapcastState& state)>;
    using Answered = std::function<void(const std::string& error)>;

    /// So long an answer may take, and a connection.
    static constexpr std::chrono::milliseconds kAnswer{1400};

    /// The context lives as long as any thread may post to it.
    SnapcastLink(std::shared_ptr<boost::asio::io_context> context, SnapcastHost host, OnState onState);

    /// OnState is told what there is after this call, or why it cannot be known; and so of every change.
    void Look();

    /// `params`: JSON.
    void Call(const std::string& method, const std::string& params, Answered answered);

    /// Ends without a word.
    void Close();

private:
    using Endpoints = LineConnection::Endpoints;
    enum class Stage { Away, Connecting, There };

    void Connect();
    void Search();
    void OnFound(const Endpoints& endpoints, const std::string& error);
    [[nodiscard]] std::shared_ptr<LineConnection>
    MakeConnection(std::function<void(const std::string&)> line);
    void OnConnected();
    void OnAnswer(const std::string& line);
    void OnNotification(const std::string& line);
    void OnStatus(const std::string& result);
    void
    Ask(const std::string& method, const std::string& params, std::function<void(bool, const std::string&)>);
    void Reset();
    void Lose(const std::string& reason, bool isHanging);
    void Drop(const std::string& reason);
    void StartClock();

    const std::shared_ptr<boost::asio::io_context> m_context;
    const SnapcastHost m_host;
    const OnState m_onState;
    boost::asio::steady_timer m_clock;
    Stage m_stage = Stage::Away;
    bool m_isSearching = false;
    bool m_isClosed = false;
    bool m_isReused = false; ///< The connection has answered before, and may have been lost since.
    std::chrono::steady_clock::time_point m_lastReturn{-kAnswer}; ///< to a server whose connection was lost
    int m_connected = 0;
    std::shared_ptr<LineConnection> m_calls;
    std::shared_ptr<LineConnection> m_notifications;
    std::uint64_t m_lastId = 0;
    std::map<std::uint64_t, std::function<void(bool isError, const std::string& json)>> m_asked;
    bool m_isLooking = false; ///< An answer is on its way.
    bool m_isDue = false;     ///< Another look, when this one is over.
};

} // namespace controller::audio
