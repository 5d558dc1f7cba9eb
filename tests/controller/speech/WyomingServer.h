#pragma once

#include "controller/speech/Voice.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace controller {

/// A server of the Wyoming protocol with espeak-ng behind it, on a thread and a free port of its own.
class WyomingServer {
public:
    /// Makes of the answer, which is whole, what is sent. Null: nobody ever answers.
    using Spoil = std::function<std::string(const std::string& answer)>;

    explicit WyomingServer(Spoil spoil = [](const std::string& answer) { return answer; });
    WyomingServer(const WyomingServer&) = delete;
    WyomingServer& operator=(const WyomingServer&) = delete;
    ~WyomingServer();

    [[nodiscard]] Voice AsVoice(const std::string& name) const;

    /// From now on it is another one by its version.
    void Upgrade() { m_version = "2"; }

    /// What it was asked for, as JSON.
    [[nodiscard]] std::vector<std::string> Asked();

private:
    void Serve();
    void Answer(int client);

    const Spoil m_spoil;
    int m_listening = -1;
    std::uint16_t m_port = 0;
    std::atomic<const char*> m_version{"1"};
    std::mutex m_mutex;
    std::vector<std::string> m_asked;
    std::thread m_thread;
};

} // namespace controller
