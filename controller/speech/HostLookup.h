#pragma once

#include "controller/driver/HostAddresses.h"
#include "controller/speech/Patience.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace controller {

/// Finds the addresses of a server. The machine may take for that as long as it likes, and nobody can end it:
/// so it is asked on a thread of its own, which is left behind when patience is over. Who comes while that is
/// still on its way waits for the same answer, so that there is one thread for a server at most. One thread
/// at a time.
class HostLookup {
public:
    using Answer = HostAddresses;
    using Ask = std::function<Answer(const std::string& host, std::uint16_t port)>;

    /// `ask` may block; it runs on any thread, and may end when the object is long gone.
    HostLookup(std::string host, std::uint16_t port, Ask ask = AskMachine);

    /// Throws `SpeechError`.
    [[nodiscard]] std::shared_ptr<const ::addrinfo> Find(const Patience& patience);

    /// As people call the server.
    [[nodiscard]] std::string Name() const { return m_host + " port " + std::to_string(m_port); }

private:
    struct Asked;

    static Answer AskMachine(const std::string& host, std::uint16_t port);
    void Begin();

    const std::string m_host;
    const std::uint16_t m_port;
    const Ask m_ask;
    std::shared_ptr<Asked> m_asked; ///< on its way
};

} // namespace controller
