#include "controller/audio/snapcast/SnapcastEntries.h"

#include "controller/driver/Text.h"

#include <algorithm>
#include <cstring>

namespace controller::audio::snapcast_entries {

namespace {

/// Values that are set stand in lines; no id has one.
constexpr char kOr = '\n';

bool IsAmong(const std::string& value, const std::string& lines) {
    for (std::size_t begin = 0; begin <= lines.size();) {
        const std::size_t end = std::min(lines.find(kOr, begin), lines.size());
        if (lines.compare(begin, end - begin, value) == 0)
            return true;
        begin = end + 1;
    }
    return false;
}

} // namespace

std::string ThingOf(const std::string& server, const std::string& client) {
    return server + " " + client;
}

std::string ServerOf(const Borrowed& entry) {
    return entry.thing.substr(0, entry.thing.find(' '));
}

std::string ClientOf(const Borrowed& entry) {
    const auto space = entry.thing.find(' ');
    return space == std::string::npos ? "" : entry.thing.substr(space + 1);
}

std::string TextOf(const SnapcastVolume& volume) {
    return std::to_string(volume.percent) + (volume.isMuted ? " muted" : "");
}

SnapcastVolume VolumeOf(const std::string& text) {
    const auto space = text.find(' ');
    return {ReadNumber<unsigned>(text.substr(0, space), 0, 100).value_or(100), space != std::string::npos};
}

std::string ValueOf(const char* property, const SnapcastState& state, const std::string& client) {
    const SnapcastGroup* const group = state.GroupOf(client);
    if (group == nullptr)
        return "";
    if (std::strcmp(property, kStream) == 0)
        return group->stream;
    if (std::strcmp(property, kMute) == 0)
        return group->isMuted ? "muted" : "heard";
    if (std::strcmp(property, kGroup) == 0)
        return group->clients.size() == 1 ? "alone" : group->id;
    return TextOf(state.VolumeOf(client));
}

bool IsOurs(const Borrowed& entry, const SnapcastState& state) {
    const std::string value = ValueOf(entry.property.c_str(), state, ClientOf(entry));
    return !value.empty() && IsAmong(value, entry.set);
}

Borrowed WithNext(const Borrowed& entry, const std::string& set) {
    Borrowed next = entry;
    if (entry.set.empty())
        next.set = set;
    else if (!IsAmong(set, entry.set))
        next.set += kOr + set;
    return next;
}

} // namespace controller::audio::snapcast_entries
