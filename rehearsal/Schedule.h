#pragma once

#include "rehearsal/VirtualTime.h"

#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <unordered_map>
#include <utility>

/// The virtual clock and what is to come: happens in the order in which it falls due, and what falls due at
/// the same moment in the order of its adding.
class Schedule {
public:
    [[nodiscard]] VirtualTime Now() const noexcept { return m_now; }

    /// Whether the clock can be moved on that far without overflowing.
    [[nodiscard]] bool CanAdvance(VirtualTime by) const noexcept { return by <= VirtualTime::max() - m_now; }

    /// Has `action` done after `delay`. `owner` is what it is done for; `id` names it for `Cancel`, or is 0
    /// when it is only cancelled with all of its owner's. What would fall due beyond the end of the clock
    /// never does.
    void Add(VirtualTime delay, const void* owner, std::uint32_t id, std::function<void()> action);

    /// Cancels what has this id, other than 0; nothing happens when nothing has it.
    void Cancel(std::uint32_t id) noexcept;

    /// Cancels all that is to be done for this owner.
    void CancelAllOf(const void* owner) noexcept;

    /// Lets time pass and does what falls due in it, also what is added on the way. Ends at exactly `by`
    /// later. `by` must not overflow the clock.
    void Advance(VirtualTime by);

private:
    using Moment = std::pair<VirtualTime, std::uint64_t>; ///< when it falls due, and the number of its adding
    struct Item {
        const void* owner;
        std::uint32_t id;
        std::function<void()> action;
    };
    using Items = std::map<Moment, Item>;

    void Erase(Items::iterator item) noexcept;

    VirtualTime m_now{0};
    std::uint64_t m_added = 0;
    Items m_items;
    // Kept, so that cancelling costs the same however much there is to come.
    std::set<std::pair<const void*, Moment>> m_byOwner;
    std::unordered_map<std::uint32_t, Moment> m_byId;
};
