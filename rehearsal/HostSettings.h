#pragma once

#include "rehearsal/VirtualTime.h"

#include <cstdint>
#include <optional>
#include <vector>

/// What the scenario says about its host; lives on when the agent is destroyed and created again.
struct HostSettings {
    std::uint32_t deviceId = 100; ///< the id of the agent's own device
    /// Ascending ids of devices with a room interface; none: all.
    std::optional<std::vector<std::uint32_t>> rooms;
    /// Whether look-ups find the service, here and below.
    bool hasDigitalAudio = true;
    bool hasLogger = true;
    bool hasDeviceManager = true;
    bool hasTimerManager = true;
    /// When the host answers `CreateStream` by itself, and `PlayFile`; none: never.
    std::optional<VirtualTime> streamReadyAfter;
    std::optional<VirtualTime> playDoneAfter;

    [[nodiscard]] bool HasRoom(std::uint32_t id) const;
};

/// A change of some of the settings: what is not named stays.
struct HostChange {
    std::optional<std::uint32_t> deviceId;
    std::optional<std::optional<std::vector<std::uint32_t>>> rooms; ///< in any order
    std::optional<bool> hasDigitalAudio;
    std::optional<bool> hasLogger;
    std::optional<bool> hasDeviceManager;
    std::optional<bool> hasTimerManager;
    std::optional<std::optional<VirtualTime>> streamReadyAfter;
    std::optional<std::optional<VirtualTime>> playDoneAfter;

    void ApplyTo(HostSettings& settings) const;
};
