#pragma once

#include "controller/audio/Mailbox.h"
#include "controller/audio/pulse/Pausing.h"

#include <memory>

namespace controller::audio {

/// The media players of the session: those that offer MPRIS on its D-Bus. Each question goes on a thread of
/// its own, which is left behind when the bus never answers; a player that does not is passed over.
[[nodiscard]] Pausing::Players MediaPlayersOfSession(const std::shared_ptr<Mailbox>& mailbox);

} // namespace controller::audio
