#include "announce/client/ApiClient.h"

#include "announce/client/EventLoop.h"
#include "announce/client/Problem.h"

#include <cctype>

namespace {

Json Parsed(const HttpAnswer& answer, const Connection& connection) {
    if (answer.body.empty())
        return nullptr;
    Json value = Json::parse(answer.body, nullptr, false);
    if (value.is_discarded())
        throw Failure(ExitStatus::Failed,
                      "what answers at " + connection.address.Text() + " is no controller",
                      "the address of a controller, such as http://127.0.0.1:8765");
    return value;
}

HttpQuestion Question(const char* method, const std::string& path) {
    HttpQuestion question;
    question.method = method;
    question.target = path;
    return question;
}

HttpQuestion Question(const char* method, const std::string& path, const Json& body) {
    HttpQuestion question = Question(method, path);
    question.contentType = "application/json";
    // A text that is not UTF-8 is refused where it comes in; what is left is not worth an exception.
    question.body = body.dump(-1, ' ', false, Json::error_handler_t::replace);
    return question;
}

} // namespace

ApiClient::ApiClient(Connection connection) : m_connection(std::move(connection)) {}

ApiClient::~ApiClient() = default;

EventLoop& ApiClient::Loop() {
    if (!m_loop)
        m_loop = std::make_unique<EventLoop>();
    return *m_loop;
}

HttpAnswer ApiClient::Send(const HttpQuestion& question) {
    HttpAnswer answer = Ask(Loop(), m_connection, question);
    if (answer.status >= 400)
        ThrowProblem(answer);
    if (answer.status >= 300)
        throw Failure(ExitStatus::Failed, "what answers at " + m_connection.address.Text() +
                                              " is no controller: it answers with status " +
                                              std::to_string(answer.status));
    return answer;
}

Json ApiClient::Get(const std::string& path) {
    return Parsed(Send(Question("GET", path)), m_connection);
}

Json ApiClient::Post(const std::string& path, const Json& body) {
    return Parsed(Send(Question("POST", path, body)), m_connection);
}

Json ApiClient::Put(const std::string& path, const Json& body) {
    return Parsed(Send(Question("PUT", path, body)), m_connection);
}

void ApiClient::Delete(const std::string& path) {
    (void)Send(Question("DELETE", path)); // nothing is answered but that it is done
}

ApiClient::Tagged ApiClient::GetTagged(const std::string& path) {
    const HttpAnswer answer = Send(Question("GET", path));
    return {Parsed(answer, m_connection), answer.etag};
}

Json ApiClient::PutOver(const std::string& path, const Json& body, const std::string& etag) {
    HttpQuestion question = Question("PUT", path, body);
    question.ifMatch = etag;
    return Parsed(Send(question), m_connection);
}

Json ApiClient::Upload(const std::string& path,
                       std::string content,
                       std::function<void(std::size_t)> progress) {
    HttpQuestion question = Question("PUT", path);
    question.contentType = "application/octet-stream";
    question.body = std::move(content);
    question.progress = std::move(progress);
    return Parsed(Send(question), m_connection);
}

EventStream ApiClient::Events() {
    return {Loop(), m_connection};
}

void ApiClient::Sleep(std::chrono::steady_clock::duration duration) {
    Loop().Sleep(duration);
}

std::string PercentEncoded(const std::string& text) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string encoded;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (std::isalnum(byte) != 0 || std::string("-._~").find(character) != std::string::npos) {
            encoded += character;
            continue;
        }
        encoded += '%';
        encoded += kDigits[byte >> 4U];
        encoded += kDigits[byte & 15U];
    }
    return encoded;
}
