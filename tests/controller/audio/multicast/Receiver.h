#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace controller::audio::test {

/// Hears one multicast group on this machine's own network, at a free port.
class Receiver final {
public:
    explicit Receiver(const std::string& group);
    ~Receiver();
    Receiver(const Receiver&) = delete;
    Receiver& operator=(const Receiver&) = delete;

    /// Where it listens, as the house file has it.
    [[nodiscard]] std::string Output() const;

    /// Everything that has come since the last time, in order.
    [[nodiscard]] std::vector<std::vector<std::uint8_t>> Take() const;

    /// Whether this machine sends to itself in this way.
    [[nodiscard]] bool CanHear() const;

private:
    std::string m_group;
    std::uint16_t m_port = 0;
    int m_socket = -1;
};

} // namespace controller::audio::test
