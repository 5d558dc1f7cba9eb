#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

namespace controller::audio {

/// Where players in the house that fetch what they play find a sound. Any thread.
class ISoundAddresses {
public:
    /// How this controller is reached, whatever the name of its machine is there.
    struct Served {
        bool isSecure = false;  ///< https
        std::uint16_t port = 0; ///< 0: it is not
    };

    /// The file can be had for so long by whoever knows its path, which this gives: it begins with a slash,
    /// and nobody can guess it. Empty when there is no way to that.
    [[nodiscard]] virtual std::string Offer(std::shared_ptr<const std::string> file,
                                            std::chrono::milliseconds life) = 0;

    /// Nobody else gets it.
    virtual void Withdraw(const std::string& path) = 0;

    /// Whether somebody has asked for it, as long as it is offered.
    [[nodiscard]] virtual bool WasFetched(const std::string& path) const = 0;

    [[nodiscard]] virtual Served GetServed() const = 0;

protected:
    ~ISoundAddresses() = default;
};

} // namespace controller::audio
