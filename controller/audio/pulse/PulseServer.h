#pragma once

#include "controller/audio/pulse/PulseState.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

struct pa_context;
struct pa_server_info;
struct pa_sink_info;
struct pa_sink_input_info;
struct pa_threaded_mainloop;

namespace controller::audio {

/// The one connection to the sound server (PulseAudio, or PipeWire in its place), on a thread of its own. It
/// connects when it is first asked to look, and again at the first look after the server has gone; it never
/// starts a server. Operations: any thread but its own; none waits for the server where nothing else is said.
class PulseServer final {
public:
    /// Called on its own thread.
    using OnState = std::function<void(const PulseState& state)>;

    /// @throws std::runtime_error when there is no thread for it.
    explicit PulseServer(OnState onState);
    PulseServer(const PulseServer&) = delete;
    PulseServer& operator=(const PulseServer&) = delete;
    ~PulseServer();

    /// Gives the server a moment to take what it was sent.
    void Flush();

    /// OnState is told what there is, or why there is nothing; and from then on of every change.
    void Look();

    void SetVolume(std::uint32_t stream, const PulseVolume& volume);

    /// Waits for the server's next answer, so long at most; nothing when there is none.
    [[nodiscard]] std::optional<PulseState> Wait(std::chrono::milliseconds limit);

private:
    struct Calls; ///< what the library calls back

    [[nodiscard]] bool IsReady();
    void Connect();
    void OnContext();
    void Begin();
    void Answered();
    void Fail();
    void Publish();

    const OnState m_onState;
    pa_threaded_mainloop* m_loop;
    pa_context* m_context = nullptr; ///< Guarded by the loop's lock, as is what follows.
    bool m_isReady = false;
    int m_missing = 0;    ///< answers of the look under way
    bool m_isDue = false; ///< another look, when this one is over
    PulseState m_looking; ///< what the look under way has found so far

    std::mutex m_mutex;
    std::condition_variable m_changed;
    PulseState m_state;   ///< Guarded by the mutex.
    unsigned m_looks = 0; ///< Guarded by the mutex.
};

} // namespace controller::audio
