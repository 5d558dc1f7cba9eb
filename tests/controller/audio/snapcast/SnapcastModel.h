#pragma once

#include "controller/audio/snapcast/SnapcastState.h"

#include <string>
#include <vector>

namespace controller::audio::test {

/// What a Snapcast server does with what it is told: groups that come, go, and are played to. Each operation
/// gives the error, as the server has it; empty: none.
class SnapcastModel final {
public:
    SnapcastModel();

    std::string SetVolume(const std::string& client, const SnapcastVolume& volume);
    std::string SetStream(const std::string& group, const std::string& stream);
    std::string SetMute(const std::string& group, bool isMuted);
    std::string SetClients(const std::string& group, const std::vector<std::string>& clients);

    /// "kitchen+bath:music kitchen=100 bath=100m": the groups, in the order of their first clients' names.
    [[nodiscard]] std::string Text() const;

    SnapcastClient& Client(const std::string& id);
    SnapcastGroup& GroupOf(const std::string& client);

    /// Kitchen and bath hear music together, the hall hears radio.
    SnapcastState state;

private:
    SnapcastGroup* Find(const std::string& group);
    unsigned m_lastGroup = 0;
};

} // namespace controller::audio::test
