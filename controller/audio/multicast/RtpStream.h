#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace controller::audio {

/// The headers of one stream of RTP packets (RFC 3550): the first has the marker, sequence number and time
/// stamp wrap.
class RtpStream final {
public:
    static constexpr std::size_t kHeaderBytes = 12;
    using Header = std::array<std::uint8_t, kHeaderBytes>;

    /// Where a stream begins; random, so that no two are taken for one.
    struct Start {
        std::uint32_t source = 0;
        std::uint16_t sequence = 0;
        std::uint32_t timestamp = 0;

        [[nodiscard]] static Start Random();
    };

    RtpStream(std::uint8_t payloadType, const Start& start) : m_payloadType(payloadType), m_next(start) {}

    /// The header of the next packet, which holds so many samples.
    [[nodiscard]] Header Next(std::uint32_t samples);

private:
    std::uint8_t m_payloadType;
    Start m_next;
    bool m_isFirst = true;
};

} // namespace controller::audio
