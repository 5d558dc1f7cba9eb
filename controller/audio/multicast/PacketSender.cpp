#include "controller/audio/multicast/PacketSender.h"

#include "controller/audio/multicast/Broadcasts.h"
#include "controller/audio/multicast/PacketSockets.h"
#include "controller/audio/multicast/Waker.h"

#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

#include <poll.h>
#include <sys/timerfd.h>
#include <unistd.h>

namespace controller::audio {

namespace {

using TimePoint = Broadcasts::Clock::time_point;

/// steady_clock is the system's monotonic clock. Without a moment it never goes off.
void SetTimer(int timer, const std::optional<TimePoint>& moment) {
    itimerspec when{};
    if (moment) {
        const auto since = std::chrono::duration_cast<std::chrono::nanoseconds>(moment->time_since_epoch());
        when.it_value.tv_sec = static_cast<time_t>(since.count() / 1'000'000'000);
        when.it_value.tv_nsec = static_cast<long>(since.count() % 1'000'000'000);
    }
    (void)timerfd_settime(timer, TFD_TIMER_ABSTIME, &when, nullptr); // The arguments are right.
}

void WaitFor(int timer, const Waker& waker) {
    std::array<pollfd, 2> descriptors{pollfd{timer, POLLIN, 0}, pollfd{waker.Descriptor(), POLLIN, 0}};
    (void)poll(descriptors.data(), descriptors.size(), -1); // Interrupted, it looks what there is to do.
    waker.Drain();
}

} // namespace

PacketSender::PacketSender(std::unique_ptr<IPacketSink> sink)
    : m_sink(sink ? std::move(sink) : std::make_unique<PacketSockets>()) {}

PacketSender::~PacketSender() {
    if (!m_waker)
        return;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isEnding = true;
    }
    m_waker->Wake();
    m_thread.join();
}

void PacketSender::Add(std::shared_ptr<ZoneStream> zone) {
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (!m_waker)
            Start();
    }
    Order(What::Add, std::move(zone));
}

void PacketSender::Stop(std::shared_ptr<ZoneStream> zone) {
    Order(What::Stop, std::move(zone));
}

void PacketSender::Abort(std::shared_ptr<ZoneStream> zone) {
    Order(What::Abort, std::move(zone));
}

void PacketSender::Start() {
    auto waker = std::make_shared<Waker>();
    const int timer = timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK);
    if (timer < 0)
        throw std::system_error(errno, std::generic_category(), "a timer");
    m_waker = std::move(waker);
    try {
        m_thread = std::thread([this, timer] { Run(timer); });
    } catch (...) {
        m_waker = nullptr;
        close(timer);
        throw;
    }
}

void PacketSender::Order(What what, std::shared_ptr<ZoneStream> zone) {
    bool isFirst = false;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        isFirst = m_commands.empty();
        m_commands.push_back({what, std::move(zone)});
    }
    // The thread takes all that waits when it wakes.
    if (isFirst)
        m_waker->Wake();
}

void PacketSender::Run(int timer) {
    Broadcasts broadcasts(*m_sink, [waker = m_waker] { waker->Wake(); });
    bool isEnding = false;
    while (!isEnding || !broadcasts.IsEmpty()) {
        isEnding = !Obey(broadcasts);
        const auto next = broadcasts.Send(Broadcasts::Clock::now());
        if (isEnding && broadcasts.IsEmpty())
            break;
        SetTimer(timer, next);
        WaitFor(timer, *m_waker);
    }
    close(timer);
}

bool PacketSender::Obey(Broadcasts& broadcasts) {
    std::vector<Command> commands;
    bool isEnding = false;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        commands.swap(m_commands);
        isEnding = m_isEnding;
    }
    for (const Command& command : commands) {
        if (command.what == What::Add)
            broadcasts.Add(command.zone);
        else if (command.what == What::Stop)
            broadcasts.Stop(command.zone);
        else
            broadcasts.Abort(command.zone);
    }
    if (isEnding)
        broadcasts.StopAll();
    return !isEnding;
}

} // namespace controller::audio
