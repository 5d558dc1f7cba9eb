#include "controller/audio/snapcast/SnapcastFeed.h"

#include "controller/audio/SoundFormat.h"

#include <boost/asio/read.hpp>
#include <boost/asio/socket_base.hpp>
#include <boost/asio/write.hpp>

#include <algorithm>
#include <cmath>
#include <utility>

namespace controller::audio {

namespace {

using boost::system::error_code;

constexpr std::int64_t kFrameBytes = 2L * kChannels;
/// A server that takes nothing of so much hangs.
constexpr std::size_t kMostWaiting = static_cast<std::size_t>(kRate * kFrameBytes);

std::int64_t SignedFramesOf(SnapcastFeed::Clock::duration time) {
    return time.count() < 0 ? -FramesOf(-time) : FramesOf(time);
}

} // namespace

SnapcastFeed::SnapcastFeed(std::shared_ptr<boost::asio::io_context> context, Order order)
    : m_context(std::move(context))
    , m_order(std::move(order))
    , m_socket(*m_context)
    , m_timer(*m_context) {}

void SnapcastFeed::Add(std::shared_ptr<RoomSlot> slot, Listener listener) {
    if (m_isClosed) {
        listener.failed("has ended");
        return;
    }
    m_rooms.push_back({std::move(slot), std::move(listener)});
    if (m_isConnected)
        Open(m_rooms.back());
    else if (!std::exchange(m_isConnecting, true))
        Connect();
}

void SnapcastFeed::Connect() {
    StartTimer(kPatience, nullptr);
    m_socket.async_connect(m_order.endpoint, [self = shared_from_this()](const error_code& error) {
        if (self->m_isClosed)
            return;
        if (error)
            self->Fail("cannot be reached: " + error.message());
        else
            self->OnConnected();
    });
}

void SnapcastFeed::OnConnected() {
    m_isConnected = true;
    m_isLate = m_order.timeline->HasClip();
    error_code ignored; // It only comes a little later then.
    m_socket.set_option(boost::asio::ip::tcp::no_delay(true), ignored);
    WatchForEnd();
    for (const Room& room : m_rooms)
        Open(room);
    Tick();
}

/// The server never says anything here; only that it is gone.
void SnapcastFeed::WatchForEnd() {
    boost::asio::async_read(m_socket, boost::asio::buffer(&m_read, 1),
                            [self = shared_from_this()](const error_code& error, std::size_t /*bytes*/) {
                                if (self->m_isClosed)
                                    return;
                                if (error)
                                    self->Fail("has closed the connection");
                                else
                                    self->WatchForEnd();
                            });
}

void SnapcastFeed::Open(const Room& room) {
    if (!m_order.timeline->SetRunning(*room.slot, true))
        room.listener.late();
}

/// Without anything to do then, patience is over.
void SnapcastFeed::StartTimer(std::chrono::milliseconds delay, void (SnapcastFeed::*then)()) {
    m_timer.expires_after(delay);
    m_timer.async_wait([self = weak_from_this(), then](const error_code& error) {
        const auto feed = self.lock();
        if (error || !feed || feed->m_isClosed)
            return;
        if (then != nullptr)
            (feed.get()->*then)();
        else if (!feed->m_isConnected)
            feed->Fail("does not answer");
    });
}

void SnapcastFeed::Tick() {
    const auto now = Clock::now();
    if (m_clip || Begin(now)) {
        const auto placed = m_order.timeline->Placed();
        const bool hasEnded = HasEnded(now);
        if (hasEnded || (placed && placed->isFadingOut)) {
            End(!hasEnded);
            return;
        }
        Feed(now);
        TellRooms(now);
    }
    if (!m_isClosed)
        StartTimer(m_clip ? kStep : kStep / 4, &SnapcastFeed::Tick);
}

/// A clip that has begun in other rooms before there was anybody to hear it here goes on with the present.
bool SnapcastFeed::Begin(Clock::time_point now) {
    m_clip = m_order.timeline->Placed();
    if (!m_clip)
        return false;
    const auto early = std::max(std::chrono::milliseconds(0), m_order.buffer - kEarlier);
    m_zero = m_order.timeline->TimeAt(m_clip->start) - early;
    const auto begin = m_order.timeline->TimeAt(m_clip->start);
    m_zero = std::max(m_zero, m_isLate ? std::min(now, begin) : now);
    m_next = SignedFramesOf(now - m_zero);
    return true;
}

void SnapcastFeed::Feed(Clock::time_point now) {
    const auto total = m_clip->clip->TotalFrames();
    std::int64_t until = SignedFramesOf(now + kAhead - m_zero);
    if (total)
        until = std::min(until, *total + FramesOf(kTail));
    while (m_next < until)
        Append(std::min(until - m_next, FramesOf(kStep)));
    if (m_bytes.size() > kMostWaiting) {
        Fail("takes no sound");
        return;
    }
    if (m_writing.empty() && !m_bytes.empty())
        Write();
}

void SnapcastFeed::Append(std::int64_t frames) {
    m_frames.assign(static_cast<std::size_t>(frames * kChannels), 0.0F);
    const std::int64_t silent = std::clamp<std::int64_t>(-m_next, 0, frames);
    if (silent < frames)
        m_clip->clip->Read(m_next + silent, m_frames.data() + silent * kChannels, frames - silent);
    m_next += frames;
    for (const float sample : m_frames) {
        const auto value = static_cast<std::uint16_t>(
            static_cast<std::int16_t>(std::lrint(std::clamp(sample * 32768.0F, -32768.0F, 32767.0F))));
        m_bytes.push_back(static_cast<char>(value & 0xffU));
        m_bytes.push_back(static_cast<char>(value >> 8U));
    }
}

void SnapcastFeed::Write() {
    m_writing.swap(m_bytes);
    boost::asio::async_write(m_socket, boost::asio::buffer(m_writing),
                             [self = shared_from_this()](const error_code& error, std::size_t /*bytes*/) {
                                 if (self->m_isClosed)
                                     return;
                                 if (error) {
                                     self->Fail("has closed the connection");
                                     return;
                                 }
                                 self->m_writing.clear();
                                 if (!self->m_bytes.empty())
                                     self->Write();
                             });
}

/// What rooms have been given is what is heard by now; a buffer of seconds is no stall.
void SnapcastFeed::TellRooms(Clock::time_point now) {
    constexpr std::chrono::milliseconds kMostBehind{1000};
    const auto behind = std::min(m_order.buffer, kMostBehind);
    const std::int64_t heard = m_clip->start + SignedFramesOf(now - m_zero - behind);
    for (const Room& room : m_rooms)
        m_order.timeline->SetGiven(*room.slot, heard);
}

bool SnapcastFeed::HasEnded(Clock::time_point now) const {
    const auto total = m_clip->clip->TotalFrames();
    if (!total || now < m_zero + TimeOf(*total) + m_order.buffer)
        return false;
    const bool isWritten = m_next >= *total + FramesOf(kTail) && m_bytes.empty() && m_writing.empty();
    return isWritten || now >= m_zero + TimeOf(*total) + m_order.buffer + kPatience;
}

void SnapcastFeed::End(bool isCut) {
    const auto rooms = std::exchange(m_rooms, {});
    if (isCut)
        DropUnheard();
    for (const Room& room : rooms) {
        m_order.timeline->SetDone(*room.slot);
        room.listener.ended(isCut);
    }
    Close();
}

void SnapcastFeed::Fail(const std::string& reason) {
    const auto rooms = std::exchange(m_rooms, {});
    Close();
    for (const Room& room : rooms)
        room.listener.failed(m_order.place + " " + reason);
}

void SnapcastFeed::Remove(const std::shared_ptr<RoomSlot>& slot) {
    m_rooms.erase(
        std::remove_if(m_rooms.begin(), m_rooms.end(), [&](const Room& room) { return room.slot == slot; }),
        m_rooms.end());
    if (!m_rooms.empty() || m_isClosed)
        return;
    DropUnheard();
    Close();
}

/// What the server has not taken yet would be heard before what comes next.
void SnapcastFeed::DropUnheard() {
    error_code ignored; // The server may have gone.
    m_socket.set_option(boost::asio::socket_base::linger(true, 0), ignored);
}

void SnapcastFeed::Close() {
    m_isClosed = true;
    m_timer.cancel();
    error_code ignored; // It is closed in any case.
    m_socket.close(ignored);
}

} // namespace controller::audio
