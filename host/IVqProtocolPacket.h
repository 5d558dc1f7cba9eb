#pragma once

#include <cstddef>

/// A packet received for a driver by a protocol of the host's own.
class IVqProtocolPacket {
public:
    /// The packet's bytes, borrowed for the call.
    [[nodiscard]] virtual const unsigned char* GetData() const = 0;
    [[nodiscard]] virtual std::size_t GetSize() const = 0;

protected:
    ~IVqProtocolPacket() = default;
};
