#include "controller/audio/multicast/RtpStream.h"

#include <cerrno>
#include <system_error>
#include <utility>

#include <sys/random.h>

namespace controller::audio {

namespace {

constexpr std::uint8_t kVersion = 2U << 6U;
constexpr std::uint8_t kMarker = 0x80;

std::uint8_t ByteOf(std::uint32_t number, unsigned place) {
    return static_cast<std::uint8_t>(number >> (8 * place));
}

} // namespace

RtpStream::Start RtpStream::Start::Random() {
    // At once, for a thousand zones begin in one breath; so few bytes come whole.
    Start start;
    if (::getrandom(&start, sizeof start, 0) != static_cast<ssize_t>(sizeof start))
        throw std::system_error(errno, std::generic_category(), "no random numbers");
    return start;
}

RtpStream::Header RtpStream::Next(std::uint32_t samples) {
    const std::uint8_t marker = std::exchange(m_isFirst, false) ? kMarker : std::uint8_t{0};
    const Header header{kVersion,
                        static_cast<std::uint8_t>(marker | m_payloadType),
                        ByteOf(m_next.sequence, 1),
                        ByteOf(m_next.sequence, 0),
                        ByteOf(m_next.timestamp, 3),
                        ByteOf(m_next.timestamp, 2),
                        ByteOf(m_next.timestamp, 1),
                        ByteOf(m_next.timestamp, 0),
                        ByteOf(m_next.source, 3),
                        ByteOf(m_next.source, 2),
                        ByteOf(m_next.source, 1),
                        ByteOf(m_next.source, 0)};
    ++m_next.sequence;
    m_next.timestamp += samples;
    return header;
}

} // namespace controller::audio
