#pragma once

#include "announce/basics/Json.h"
#include "announce/client/Connection.h"
#include "announce/client/EventStream.h"
#include "announce/client/Http.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>

class EventLoop;

/// The controller's API. Every operation throws Failure with the controller's own words, or with the reason
/// why it does not answer. Nothing is connected before the first of them.
class ApiClient {
public:
    explicit ApiClient(Connection connection);
    ApiClient(const ApiClient&) = delete;
    ApiClient& operator=(const ApiClient&) = delete;
    ~ApiClient();

    [[nodiscard]] Json Get(const std::string& path);
    Json Post(const std::string& path, const Json& body = Json::object());
    Json Put(const std::string& path, const Json& body);
    void Delete(const std::string& path);

    /// What is stored, and the ETag that goes along with it; empty when the controller gives none.
    struct Tagged {
        Json value;
        std::string etag;
    };
    [[nodiscard]] Tagged GetTagged(const std::string& path);

    /// Replaces it only when it is still the one of that ETag; else throws Failure (Conflict).
    Json PutOver(const std::string& path, const Json& body, const std::string& etag);

    /// Sends a file; `progress` hears how many bytes have been sent.
    Json Upload(const std::string& path, std::string content, std::function<void(std::size_t)> progress);

    [[nodiscard]] EventStream Events();
    void Sleep(std::chrono::steady_clock::duration duration);

private:
    HttpAnswer Send(const HttpQuestion& question);
    EventLoop& Loop();

    Connection m_connection;
    /// Made when it is first needed: before, SIGINT ends the program at once, as it should.
    std::unique_ptr<EventLoop> m_loop;
};

/// `text` as one part of a path.
[[nodiscard]] std::string PercentEncoded(const std::string& text);
