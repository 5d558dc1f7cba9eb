#pragma once

#include "rehearsal/Step.h"

#include <cstdint>
#include <string_view>
#include <vector>

/// What the host does from inside one of the agent's calls.
struct Reaction {
    std::string_view call;   ///< one of `kReactionCalls`
    std::uint32_t nth = 1;   ///< at which such call, from 1, counted from the moment in which it was set
    std::vector<Step> steps; ///< at least one; only the last may be `StepKind::Throw`
};

/// The calls inside which a host can react.
constexpr std::string_view kReactionCalls[] = {
    "VqBaseDriver.AddTimer",
    "VqBaseDriver.FireEvent",
    "VqBaseDriver.LogMessage",
    "VqBaseDriver.DmInvalidateState",
    "ITimerManager.AddTimer",
    "ITimerManager.KillTimer",
    "IDeviceManager.SendCommandToDevice",
    "IDeviceManager.InvalidateDeviceState",
    "IRoomProxy.SetUpAudio",
    "IRoomProxy.SetAudioVolume",
    "IRoomProxy.RestoreAudioState",
    "IRoomProxy.SetUpVideo",
    "IRoomProxy.RestoreVideoState",
    "IDigitalAudio.CreateStream",
    "IDigitalAudio.ReleaseStream",
    "IDigitalAudio.PlayFile",
    "ILogger.Log",
};
