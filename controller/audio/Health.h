#pragma once

#include <string>

namespace controller::audio {

/// Whether a place would be heard if something played there now.
struct Health {
    enum class State {
        Unknown, ///< Nobody can say before something has played there, or ever.
        Healthy,
        Silent, ///< It plays, and nobody hears it; without a reason that is what is wanted there.
        Unheard
    };
    State state = State::Unknown;
    std::string reason;

    bool operator==(const Health& other) const { return state == other.state && reason == other.reason; }
    bool operator!=(const Health& other) const { return !(*this == other); }
};

} // namespace controller::audio
