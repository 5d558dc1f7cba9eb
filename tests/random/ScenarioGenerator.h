#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

/// What a scenario may hold.
enum class Flavour {
    /// Playing, queueing and adding, on a host that has its managers and whose rooms stay: whatever was set
    /// up must be restored, and the queue can be followed from outside.
    Calm,
    /// Also whatever excuses an announcement from restoring or from being known by one id: rooms removed or
    /// replaced in mid-play, managers and rooms that vanish, the agent destroyed, ids of a description's own,
    /// texts that are no XML.
    Wild,
    /// A host that acts, or throws, from inside the agent's calls. What becomes of a play is then anybody's
    /// guess, but the agent must come out of it as one that was read from its saved state.
    Meddling,
};

/// Makes scenarios line by line, in one build always the same for the same seed.
class ScenarioGenerator {
public:
    ScenarioGenerator(std::uint32_t seed, Flavour flavour) : m_random(seed), m_flavour(flavour) {}

    /// The steps of a scenario; the first ones load announcements 1 to 4.
    [[nodiscard]] std::vector<std::string> Steps(std::size_t count);

private:
    using Texts = std::vector<std::string>;

    [[nodiscard]] std::string AnyStep();
    [[nodiscard]] std::string PlayingStep();
    [[nodiscard]] std::string EditingStep();
    [[nodiscard]] std::string BoldEditingStep();
    [[nodiscard]] std::string WildStep();
    [[nodiscard]] std::string HostStep();
    [[nodiscard]] std::string WildHostStep();

    [[nodiscard]] std::string Reaction();
    [[nodiscard]] std::string ReactionStep();

    [[nodiscard]] std::string State();
    [[nodiscard]] std::string Description(const std::string& id);
    [[nodiscard]] std::string Rooms();
    [[nodiscard]] std::string Navigators();
    [[nodiscard]] std::string Room();
    [[nodiscard]] std::string Id();
    [[nodiscard]] std::string OwnId();

    [[nodiscard]] const std::string& OneOf(const Texts& texts) { return texts[m_random() % texts.size()]; }
    /// True once in so many times.
    [[nodiscard]] bool Once(std::uint32_t times) { return m_random() % times == 0; }

    std::mt19937 m_random;
    Flavour m_flavour;
};
