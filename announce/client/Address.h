#pragma once

#include <cstdint>
#include <string>

/// Where a controller answers.
struct Address {
    static constexpr std::uint16_t kPort = 8765;

    bool isSecure = false;
    std::string host = "127.0.0.1"; ///< a name, or a numeric address; without the brackets of IPv6
    std::uint16_t port = kPort;

    /// Reads HOST, HOST:PORT, or these behind http:// or https://. Throws Failure (Usage) that says what
    /// would be right.
    [[nodiscard]] static Address Read(const std::string& text);

    /// `http://127.0.0.1:8765`.
    [[nodiscard]] std::string Text() const;

    /// What the Host header carries.
    [[nodiscard]] std::string Authority() const;
};
