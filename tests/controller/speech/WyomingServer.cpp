#include "tests/controller/speech/WyomingServer.h"

#include "controller/speech/Patience.h"
#include "controller/speech/RunProgram.h"
#include "controller/speech/Wave.h"
#include "controller/speech/WyomingReader.h"
#include "tests/controller/support/Within.h"

#include <array>
#include <stdexcept>
#include <utility>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace controller {

namespace {

constexpr std::size_t kMost = std::size_t{8} << 20U;
constexpr std::size_t kAtOnce = 2048;

std::string Spoken(const std::string& text) {
    const StopSignal stop;
    const std::string file = wave::Mended(
        RunProgram({"espeak-ng", "--stdin", "--stdout"}, text, kMost, Patience(stop, kPatience)));
    const std::string samples = file.substr(44);
    const nlohmann::json format{{"rate", 22050}, {"width", 2}, {"channels", 1}};
    std::string answer = Written({"audio-start", format, ""});
    for (std::size_t at = 0; at < samples.size(); at += kAtOnce)
        answer += Written({"audio-chunk", format, samples.substr(at, kAtOnce)});
    return answer + Written({"audio-stop", nlohmann::json::object(), ""});
}

std::string Info(const char* version) {
    const nlohmann::json voice{{"name", "en_GB-test"}, {"languages", {"en_GB"}}, {"version", version}};
    return Written({"info", {{"tts", {{{"name", "test"}, {"voices", {voice}}}}}}, ""});
}

void Send(int client, const std::string& answer) {
    for (std::size_t at = 0; at < answer.size();) {
        const ssize_t sent = ::send(client, answer.data() + at, answer.size() - at, MSG_NOSIGNAL);
        if (sent <= 0)
            return;
        at += static_cast<std::size_t>(sent);
    }
}

} // namespace

WyomingServer::WyomingServer(Spoil spoil) : m_spoil(std::move(spoil)) {
    m_listening = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* const any = reinterpret_cast<sockaddr*>(&address); // NOLINT(*-reinterpret-cast): as sockets demand
    if (::bind(m_listening, any, size) != 0 || ::listen(m_listening, 5) != 0 ||
        ::getsockname(m_listening, any, &size) != 0)
        throw std::runtime_error("no port for a server");
    m_port = ntohs(address.sin_port);
    if (m_spoil)
        m_thread = std::thread([this] { Serve(); });
}

WyomingServer::~WyomingServer() {
    ::shutdown(m_listening, SHUT_RDWR);
    if (m_thread.joinable())
        m_thread.join();
    ::close(m_listening);
}

Voice WyomingServer::AsVoice(const std::string& name) const {
    Voice voice;
    voice.name = name;
    voice.engine = Voice::Engine::Wyoming;
    voice.language = "en";
    voice.voice = "en_GB-test";
    voice.host = "127.0.0.1";
    voice.port = m_port;
    return voice;
}

std::vector<std::string> WyomingServer::Asked() {
    const std::lock_guard lock(m_mutex);
    return m_asked;
}

void WyomingServer::Serve() {
    while (true) {
        const int client = ::accept4(m_listening, nullptr, nullptr, SOCK_CLOEXEC);
        if (client < 0)
            return;
        Answer(client);
        ::close(client);
    }
}

void WyomingServer::Answer(int client) {
    WyomingReader reader;
    std::array<char, 4096> bytes{};
    while (true) {
        const ssize_t count = ::recv(client, bytes.data(), bytes.size(), 0);
        if (count <= 0)
            return;
        reader.Take(bytes.data(), static_cast<std::size_t>(count));
        const auto event = reader.Next();
        if (!event)
            continue;
        if (event->type == "describe") {
            Send(client, Info(m_version));
            continue;
        }
        {
            const std::lock_guard lock(m_mutex);
            m_asked.push_back(event->type + " " + event->data.dump());
        }
        const std::string answer = m_spoil(Spoken(event->data.at("text").get<std::string>()));
        Send(client, answer);
        // Ends when the other side does, so that nothing on the way is lost.
        ::shutdown(client, SHUT_WR);
        while (::recv(client, bytes.data(), bytes.size(), 0) > 0)
            continue;
        return;
    }
}

} // namespace controller
