#include "rehearsal/HostSettings.h"

#include <algorithm>

namespace {

template <class Value>
void Apply(const std::optional<Value>& change, Value& setting) {
    if (change)
        setting = *change;
}

} // namespace

bool HostSettings::HasRoom(std::uint32_t id) const {
    return !rooms || std::binary_search(rooms->begin(), rooms->end(), id);
}

void HostChange::ApplyTo(HostSettings& settings) const {
    Apply(deviceId, settings.deviceId);
    Apply(rooms, settings.rooms);
    if (rooms && settings.rooms)
        std::sort(settings.rooms->begin(), settings.rooms->end());
    Apply(hasDigitalAudio, settings.hasDigitalAudio);
    Apply(hasLogger, settings.hasLogger);
    Apply(hasDeviceManager, settings.hasDeviceManager);
    Apply(hasTimerManager, settings.hasTimerManager);
    Apply(streamReadyAfter, settings.streamReadyAfter);
    Apply(playDoneAfter, settings.playDoneAfter);
}
