#pragma once

#include "controller/audio/Borrowed.h"
#include "controller/audio/snapcast/SnapcastState.h"

#include <string>
#include <vector>

/// What is borrowed of Snapcast servers, as it is written down: for each client its volume, and its group's
/// stream, muting and members.
namespace controller::audio::snapcast_entries {

constexpr const char* kKind = "snapcast";
constexpr const char* kVolume = "volume";
constexpr const char* kStream = "stream";
constexpr const char* kMute = "mute";
constexpr const char* kGroup = "group";

/// "SERVER CLIENT".
[[nodiscard]] std::string ThingOf(const std::string& server, const std::string& client);
[[nodiscard]] std::string ServerOf(const Borrowed& entry);
[[nodiscard]] std::string ClientOf(const Borrowed& entry);

[[nodiscard]] std::string TextOf(const SnapcastVolume& volume);
[[nodiscard]] SnapcastVolume VolumeOf(const std::string& text);

/// What it is in the state, as text of an entry; empty where the client is not known.
[[nodiscard]] std::string
ValueOf(const char* property, const SnapcastState& state, const std::string& client);

/// Whether the entry's value is in the state one that announcements have set.
[[nodiscard]] bool IsOurs(const Borrowed& entry, const SnapcastState& state);

/// The entry with one more value that is set: until the server has taken it, it may have the former one.
[[nodiscard]] Borrowed WithNext(const Borrowed& entry, const std::string& set);

} // namespace controller::audio::snapcast_entries
