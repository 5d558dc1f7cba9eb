#pragma once

#include "controller/http/HttpStream.h"
#include "controller/http/ReplyWriter.h"
#include "controller/http/RequestReader.h"

#include <functional>
#include <memory>
#include <string>

namespace controller {

/// A connection that speaks HTTP: reads a request, has it handled, writes the reply, and so on, each step in
/// its time. `HttpConnection.cpp` makes it for the server's streams; for others include
/// `HttpConnectionSteps.h`.
template <class Stream>
class HttpConnection final : public HttpExchange,
                             public Connections::Member,
                             public std::enable_shared_from_this<HttpConnection<Stream>> {
public:
    HttpConnection(std::shared_ptr<Stream> stream,
                   std::shared_ptr<Connections::Place> place,
                   IHttpHandler& handler);

    void Start();

    [[nodiscard]] const HttpRequest& Request() const noexcept override { return m_reader.Request(); }
    void ReadBody(std::size_t limit,
                  std::chrono::seconds time,
                  std::function<void(std::string body)> onBody) override;
    void Reply(HttpReply reply) override;
    void Upgrade(std::function<void(std::shared_ptr<WebSocket>)> onOpen) override;
    void TrustClient() override { m_place->Trust(); }

    Connections::TimePoint Check(Connections::TimePoint now) override;
    void Stop() override { CloseSocket(); }
    [[nodiscard]] bool IsWaiting() const noexcept override;

private:
    enum class State { Handshake, Idle, Head, Handling, Body, Replying, Closing, Ended };

    void NextRequest();
    void Read();
    void WasRead(const boost::system::error_code& error, std::size_t size);
    void Do(RequestReader::Step step);
    void Handle();
    void HandBody();
    template <class Work>
    void Guard(const Work& work);
    void SendContinue();
    void Refuse(const HttpRefusal& refusal);
    void Write();
    void Written(const boost::system::error_code& error, std::size_t size);
    void CloseInOrder();
    void CloseTransport();
    void CloseSocket();
    void Enter(State state, std::chrono::seconds time);
    [[nodiscard]] const HttpLimits& Limits() const noexcept { return m_place->Owner().Limits(); }
    [[nodiscard]] bool HasEnded() const noexcept { return m_state == State::Ended; }

    const std::shared_ptr<Stream> m_stream;
    const std::shared_ptr<Connections::Place> m_place;
    IHttpHandler& m_handler;
    State m_state = State::Handshake;
    Connections::TimePoint m_deadline = Connections::TimePoint::max();
    RequestReader m_reader;
    std::function<void(std::string)> m_onBody;
    ReplyWriter m_writer;
    bool m_isLast = false;
};

extern template class HttpConnection<HttpStream>;

} // namespace controller
