#pragma once

#include "tests/controller/audio/snapcast/SnapcastModel.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace controller::audio::test {

/// A Snapcast server on this machine's own network, at free ports, on a thread of its own: the control of a
/// model, and the source "announcements", whose sound it keeps.
class StandInServer final {
public:
    enum class Manner {
        Usual,
        Hangs,         ///< takes what it is asked, and never answers
        TalksNonsense, ///< answers each line with one that is no JSON
        NestsDeeply,   ///< answers with lists in lists in lists
        RefusesStatus,
        RefusesWithoutWords, ///< with numbers where its words should be
        RefusesChanges,
        ClosesAtChanges,
        IgnoresSource, ///< closes what feeds it
    };

    explicit StandInServer(Manner manner = Manner::Usual);
    ~StandInServer();
    StandInServer(const StandInServer&) = delete;
    StandInServer& operator=(const StandInServer&) = delete;

    /// What the house file has for this client.
    [[nodiscard]] std::string Output(const std::string& client) const;

    /// The ports are left, and every connection ends; as of a server that is killed.
    void Kill();
    /// It is back, at the same ports.
    void Start();

    void SetManner(Manner manner);
    [[nodiscard]] std::string Text() const;

    /// Somebody else changes something; whoever listens is told.
    void Change(const std::function<void(SnapcastModel&)>& change);

    /// Of the left channel, what has come at the source so far.
    [[nodiscard]] std::vector<short> Heard() const;
    [[nodiscard]] unsigned Feeds() const;

private:
    struct Parts;
    struct Connection;
    const std::unique_ptr<Parts> m_parts;
};

} // namespace controller::audio::test
