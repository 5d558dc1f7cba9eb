#pragma once

#include "controller/driver/Alarm.h"
#include "controller/driver/DriverOnly.h"
#include "controller/events/EventFeed.h"
#include "controller/rooms/Variables.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace controller {

/// The variable that a popup's message follows.
struct MessageBinding {
    std::uint32_t device = 0;
    std::uint32_t variable = 0;
};

/// The popups that stand on the screens: at most one on each navigator, each with a number and an end.
/// Screens are told by events, and ask for what stands when they join late. Driver thread only.
class Popups {
public:
    /// How long a popup without a delay of its own stands.
    static constexpr std::chrono::milliseconds kLongest{30000};

    struct Wanted {
        std::string message; ///< not used with a binding
        std::optional<MessageBinding> binding;
        std::string image;
        std::chrono::milliseconds delay{0}; ///< 0: until it is hidden, `kLongest` at most
        bool hasOkButton = true;
        std::uint64_t show =
            0; ///< the playing that it belongs to; what is dismissed is dismissed for all of it
    };

    struct Popup {
        std::uint64_t number = 0;
        std::uint32_t navigator = 0;
        std::string message;
        std::string image;
        std::chrono::milliseconds remaining{0};
        bool hasOkButton = true;
        std::uint64_t show = 0;
    };

    /// All are borrowed for life.
    Popups(IScheduler& scheduler, const Variables& variables, EventFeed& feed);

    /// Shows a popup in place of the one that stands on this navigator, and gives its number.
    std::uint64_t Show(std::uint32_t navigator, const Wanted& wanted);

    /// Takes the navigator's popup away, and those of the same show on every other one.
    void DismissOn(std::uint32_t navigator);

    /// The same, by the popup's number; false when it is gone.
    bool Dismiss(std::uint64_t number);

    /// The controller ends: takes every popup away.
    void HideAll();

    /// What stands now, by navigator.
    [[nodiscard]] std::vector<Popup> Standing() const;

private:
    struct Shown {
        std::uint64_t number = 0;
        std::uint64_t show = 0;
        Wanted wanted;
        IScheduler::Duration end{0};
        std::unique_ptr<Alarm> alarm;
    };

    [[nodiscard]] std::string MessageOf(const Wanted& wanted) const;
    void End(std::uint32_t navigator, events::PopupEnd why);
    void VariableHasChanged(const events::VariableChanged& change);

    IScheduler& m_scheduler;
    const Variables& m_variables;
    EventFeed& m_feed;
    std::uint64_t m_lastNumber = 0;
    std::map<std::uint32_t, Shown> m_shown;
    EventFeed::Subscription m_subscription;
    DriverOnly m_driverOnly;
};

} // namespace controller
