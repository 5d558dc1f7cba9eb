#pragma once

#include "controller/audio/multicast/Broadcast.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace controller::audio {

/// All zones that are sent to just now. One thread, which owns the time.
class Broadcasts final {
public:
    using Clock = Broadcast::Clock;
    using ZonePointer = Broadcast::ZonePointer;

    /// `wake` is called, on any thread, when there may be packets to send sooner than was said.
    Broadcasts(IPacketSink& sink, std::function<void()> wake) : m_sink(sink), m_wake(std::move(wake)) {}

    void Add(const ZonePointer& zone);
    void Stop(const ZonePointer& zone);
    void Abort(const ZonePointer& zone);
    void StopAll();

    [[nodiscard]] bool IsEmpty() const { return m_broadcasts.empty(); }

    /// Sends everything that is due, and says when the next is; nothing when that is not known.
    [[nodiscard]] std::optional<Clock::time_point> Send(Clock::time_point now);

private:
    [[nodiscard]] Broadcast* Find(const ZonePointer& zone);

    IPacketSink& m_sink;
    const std::function<void()> m_wake;
    std::vector<std::unique_ptr<Broadcast>> m_broadcasts;
};

} // namespace controller::audio
