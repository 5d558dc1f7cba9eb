#pragma once

#include "controller/audio/home_assistant/HomeAssistantRoom.h"
#include "controller/audio/home_assistant/NameSearch.h"

#include <boost/asio/io_context.hpp>

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace boost::asio::ssl {
class context;
}

namespace controller::audio {

/// A request to a server, on a connection of its own.
struct HttpOrder {
    HttpPlace server;
    std::string path; ///< behind the server's own
    std::string token;
    std::string body; ///< JSON, which is posted; empty: a GET
    std::chrono::milliseconds limit{0};
};

struct HttpOutcome {
    std::string error; ///< why there is no answer; empty: there is one
    unsigned status = 0;
    std::string body;
    std::string ourAddress; ///< of this machine, as the server sees it; numeric
};

/// What is needed for that, and borrowed by each call.
struct HttpMeans {
    boost::asio::io_context& context;
    boost::asio::ssl::context& tls;
    NameSearch& names;
};

/// A request under way. The context's thread.
class HttpCall {
public:
    using Done = std::function<void(const HttpOutcome& outcome)>;
    using Lost = std::function<void()>;

    HttpCall() = default;
    HttpCall(const HttpCall&) = delete;
    HttpCall& operator=(const HttpCall&) = delete;
    virtual ~HttpCall() = default;

    /// Ends the connection; nobody is called back any more.
    virtual void Cancel() = 0;
};

/// Asks, and calls `done` once with the answer, or why there is none. With `lost` the connection is kept
/// behind an answer, and `lost` called when the server ends it, until the call is cancelled.
[[nodiscard]] std::shared_ptr<HttpCall>
BeginHttpCall(const HttpMeans& means, HttpOrder order, HttpCall::Done done, HttpCall::Lost lost = {});

} // namespace controller::audio
