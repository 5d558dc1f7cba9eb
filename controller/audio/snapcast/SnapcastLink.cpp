#include "controller/audio/snapcast/SnapcastLink.h"

#include "controller/audio/snapcast/SnapcastJson.h"
#include "controller/audio/snapcast/SnapcastSearch.h"
#include "controller/driver/Text.h"

#include <boost/asio/post.hpp>

#include <stdexcept>
#include <utility>

namespace controller::audio {

namespace {

using Json = nlohmann::json;

constexpr std::size_t kMostReason = 200;

std::string ReasonOf(const Json& error) {
    const std::string data = TextIn(error, "data");
    return OneLine((data.empty() ? TextIn(error, "message") : data).substr(0, kMostReason));
}

} // namespace

SnapcastLink::SnapcastLink(std::shared_ptr<boost::asio::io_context> context,
                           SnapcastHost host,
                           OnState onState)
    : m_context(std::move(context))
    , m_host(std::move(host))
    , m_onState(std::move(onState))
    , m_clock(*m_context) {}

void SnapcastLink::Look() {
    if (m_isClosed)
        return;
    if (m_isLooking || m_stage != Stage::There) {
        m_isDue = true;
        Connect();
        return;
    }
    m_isLooking = true;
    Ask("Server.GetStatus", "", [this](bool isError, const std::string& json) {
        m_isLooking = false;
        if (isError)
            Lose("refuses to say what it has: " + json, false);
        else
            OnStatus(json);
    });
}

void SnapcastLink::Connect() {
    if (m_stage != Stage::Away)
        return;
    m_stage = Stage::Connecting;
    m_connected = 0;
    StartClock();
    Search();
}

/// The machine may take for a name as long as it likes, and nobody can end that: one search at a time, which
/// is left to itself when patience is over.
void SnapcastLink::Search() {
    if (std::exchange(m_isSearching, true))
        return;
    SearchSnapcastHost(m_host, m_context,
                       [self = weak_from_this()](const Endpoints& endpoints, const std::string& error) {
                           if (const auto link = self.lock())
                               link->OnFound(endpoints, error);
                       });
}

void SnapcastLink::OnFound(const Endpoints& endpoints, const std::string& error) {
    m_isSearching = false;
    if (m_isClosed || m_stage != Stage::Connecting)
        return;
    if (endpoints.empty()) {
        Drop("cannot be found: " + error);
        return;
    }
    m_calls = MakeConnection([this](const std::string& line) { OnAnswer(line); });
    m_notifications = MakeConnection([this](const std::string& line) { OnNotification(line); });
    m_calls->Connect(endpoints);
    m_notifications->Connect(endpoints);
}

std::shared_ptr<LineConnection> SnapcastLink::MakeConnection(std::function<void(const std::string&)> line) {
    return std::make_shared<LineConnection>(
        *m_context, LineConnection::Listener{[this] { OnConnected(); }, std::move(line),
                                             [this](const std::string& reason) {
                                                 Drop(reason);
                                             }});
}

void SnapcastLink::OnConnected() {
    if (++m_connected < 2)
        return;
    m_stage = Stage::There;
    m_isReused = false;
    m_isDue = false;
    Look();
}

void SnapcastLink::Ask(const std::string& method,
                       const std::string& params,
                       std::function<void(bool, const std::string&)> answered) {
    if (m_asked.empty())
        StartClock();
    m_asked[++m_lastId] = std::move(answered);
    m_calls->Send(R"({"jsonrpc":"2.0","id":)" + std::to_string(m_lastId) + R"(,"method":")" + method + '"' +
                  (params.empty() ? "" : ",\"params\":" + params) + "}");
}

void SnapcastLink::Call(const std::string& method, const std::string& params, Answered answered) {
    if (m_isClosed || m_stage != Stage::There) {
        answered("it is not there");
        return;
    }
    Ask(method, params, [answered = std::move(answered)](bool isError, const std::string& json) {
        answered(isError ? json : "");
    });
}

/// Each answer gets the whole time: they come one after the other.
void SnapcastLink::StartClock() {
    m_clock.expires_after(kAnswer);
    m_clock.async_wait([self = weak_from_this()](const boost::system::error_code& error) {
        const auto link = self.lock();
        if (error || !link || link->m_clock.expiry() > std::chrono::steady_clock::now())
            return;
        if (link->m_stage == Stage::Connecting || !link->m_asked.empty())
            link->Lose("does not answer", true);
    });
}

void SnapcastLink::OnAnswer(const std::string& line) {
    const Json json = ReadSnapcastJson(line);
    const bool isAnswer = json.is_object() && json.contains("id") && json["id"].is_number_unsigned();
    if (json.is_discarded() || (json.is_object() && !isAnswer && !json.contains("method"))) {
        Lose("answers what is no Snapcast server's", false);
        return;
    }
    const auto place = isAnswer ? m_asked.find(json["id"].get<std::uint64_t>()) : m_asked.end();
    if (place == m_asked.end())
        return;
    const auto answered = std::move(place->second);
    m_asked.erase(place);
    if (m_asked.empty())
        m_clock.cancel();
    else
        StartClock();
    m_isReused = true;
    const bool isError = json.contains("error") && json["error"].is_object();
    const auto result = json.find("result");
    answered(isError, isError ? ReasonOf(json["error"]) : (result != json.end() ? *result : Json()).dump());
}

void SnapcastLink::OnNotification(const std::string& line) {
    const Json json = ReadSnapcastJson(line);
    const bool isOne = json.is_object() && json.contains("method") && json["method"].is_string();
    // What streams say comes often, and changes nothing that is looked for.
    if (isOne && json["method"].get_ref<const std::string&>().rfind("Stream.", 0) != 0)
        Look();
}

void SnapcastLink::OnStatus(const std::string& result) {
    SnapcastState state;
    try {
        state = ReadSnapcastState(result);
    } catch (const std::runtime_error& /*error*/) {
        Lose("answers what is no Snapcast server's", false);
        return;
    }
    state.address = m_calls->Address();
    m_onState(state);
    if (std::exchange(m_isDue, false))
        Look();
}

/// A connection that was there before may have been lost long ago, and the server be back since. Who asks in
/// the moment in which that is noticed is told of the server, not of the connection.
void SnapcastLink::Drop(const std::string& reason) {
    const auto now = std::chrono::steady_clock::now();
    const bool isAwaited = m_isLooking || m_isDue;
    const bool isChanging = m_asked.size() > (m_isLooking ? 1U : 0U);
    const bool isTooOften = !isAwaited && now < m_lastReturn + kAnswer;
    if (!std::exchange(m_isReused, false) || isChanging || isTooOften) {
        Lose(reason, false);
        return;
    }
    m_lastReturn = now;
    Reset();
    Look();
}

void SnapcastLink::Reset() {
    for (const auto& connection : {m_calls, m_notifications})
        if (connection)
            connection->Close();
    m_clock.cancel();
    m_stage = Stage::Away;
    m_isLooking = false;
    m_isDue = false;
    m_asked.clear(); // What they would say is told by the next state.
}

void SnapcastLink::Lose(const std::string& reason, bool isHanging) {
    Reset();
    m_isReused = false;
    SnapcastState state;
    state.isHanging = isHanging;
    state.reason = reason;
    m_onState(state);
}

void SnapcastLink::Close() {
    m_isClosed = true;
    Reset();
}

} // namespace controller::audio
