#pragma once

#include "controller/audio/multicast/IPacketSink.h"

#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace controller::audio {

class Broadcasts;
class Waker;
class ZoneStream;

/// Sends the packets of all zones, on one thread of its own, which begins with the first zone. Any thread; no
/// operation waits for the network.
class PacketSender final {
public:
    /// `sink`: where they go; the network, if it is not said.
    explicit PacketSender(std::unique_ptr<IPacketSink> sink = nullptr);

    /// Stops what is still sent, in good order.
    ~PacketSender();

    PacketSender(const PacketSender&) = delete;
    PacketSender& operator=(const PacketSender&) = delete;

    /// @throws std::system_error when there is no thread for it.
    void Add(std::shared_ptr<ZoneStream> zone);
    void Stop(std::shared_ptr<ZoneStream> zone);
    void Abort(std::shared_ptr<ZoneStream> zone);

private:
    enum class What { Add, Stop, Abort };
    struct Command {
        What what;
        std::shared_ptr<ZoneStream> zone;
    };

    void Start();
    void Order(What what, std::shared_ptr<ZoneStream> zone);
    void Run(int timer);
    /// False when it is to end.
    bool Obey(Broadcasts& broadcasts);

    const std::unique_ptr<IPacketSink> m_sink;
    std::mutex m_mutex;
    std::vector<Command> m_commands;
    bool m_isEnding = false;
    std::shared_ptr<Waker> m_waker; ///< null: the thread has not begun
    std::thread m_thread;
};

} // namespace controller::audio
