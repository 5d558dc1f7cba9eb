#pragma once

#include "controller/audio/Health.h"
#include "controller/audio/OutputDescription.h"
#include "controller/driver/Alarm.h"
#include "controller/driver/IScheduler.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace controller::audio {

/// Knows of each room whether it would be heard, before an announcement is lost there: its kind of output is
/// asked at the start, when something has changed there, and every so often; and what has played there says
/// more. One question for all rooms of a kind is under way at most, for it may never be answered. Driver
/// thread.
class HealthWatch final {
public:
    using Answer = std::function<void(std::vector<Health> answers)>;

    struct Room {
        std::uint32_t id = 0;
        OutputDescription output;
    };
    struct Parts {
        IScheduler& driver; ///< borrowed for life
        /// Asks the kind about places with these texts; false when that kind cannot be asked. The answers, in
        /// the order of the texts, come later, or never.
        std::function<bool(const std::string& kind, const std::vector<std::string>& texts, Answer answer)>
            ask;
        std::function<void(std::uint32_t room, const Health& health)> changed;
    };

    static constexpr std::chrono::seconds kCalm{30};   ///< between two questions
    static constexpr std::chrono::seconds kWorried{5}; ///< while a room is not heard
    static constexpr std::chrono::seconds kPatience{5};
    static constexpr const char* kNoAnswer = "its output does not answer";

    HealthWatch(const std::vector<Room>& rooms, Parts parts);

    /// Asks every kind.
    void Begin();

    /// Something may be different with all rooms of the kind; what is answered now counts, whatever played.
    void LookAgain(const std::string& kind);

    /// While an announcement plays, nothing is asked, and what was asked does not count.
    void Hold();
    void Resume();

    /// An announcement was heard there, to its last sample.
    void Heard(std::uint32_t room);

    /// It was not, and why.
    void NotHeard(std::uint32_t room, const Health& health);

private:
    struct Place {
        std::uint32_t room = 0;
        bool isAnswering = true; ///< It can be known whether it was heard.
        bool hasFailed = false;  ///< in an announcement, for a reason that no answer told: see `asked`
        std::optional<Health> asked;
        Health now;
    };
    struct Kind {
        explicit Kind(IScheduler& driver);

        std::vector<std::string> texts; ///< of the places, in their order
        std::vector<Place> places;
        bool isAsking = false;
        bool isDue = false; ///< to be asked when that is over
        bool isNews = false;
        Alarm next;
        Alarm patience;
    };

    void Ask(const std::string& name);
    void Answered(Kind& kind, const std::vector<Health>& answers);
    void Count(Kind& kind, const std::vector<Health>& answers);
    void Set(Place& place, const Health& health);
    [[nodiscard]] Place* Find(std::uint32_t room) const;

    const Parts m_parts;
    std::map<std::string, Kind> m_kinds;
    std::map<std::uint32_t, Place*> m_places; ///< by room
    bool m_isHeld = false;
};

} // namespace controller::audio
