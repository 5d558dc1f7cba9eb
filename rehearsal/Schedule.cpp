#include "rehearsal/Schedule.h"

#include <cassert>

void Schedule::Add(VirtualTime delay, const void* owner, std::uint32_t id, std::function<void()> action) {
    if (!CanAdvance(delay))
        return;
    const Moment moment(m_now + delay, m_added++);
    m_items.emplace(moment, Item{owner, id, std::move(action)});
    m_byOwner.emplace(owner, moment);
    if (id != 0)
        m_byId[id] = moment;
}

void Schedule::Cancel(std::uint32_t id) noexcept {
    const auto found = m_byId.find(id);
    if (found != m_byId.end())
        Erase(m_items.find(found->second));
}

void Schedule::CancelAllOf(const void* owner) noexcept {
    for (auto first = m_byOwner.lower_bound({owner, Moment()});
         first != m_byOwner.end() && first->first == owner; first = m_byOwner.lower_bound({owner, Moment()}))
        Erase(m_items.find(first->second));
}

void Schedule::Advance(VirtualTime by) {
    assert(CanAdvance(by));
    const VirtualTime end = m_now + by;
    for (auto first = m_items.begin(); first != m_items.end() && first->first.first <= end;
         first = m_items.begin()) {
        m_now = first->first.first;
        const std::function<void()> action = std::move(first->second.action);
        Erase(first);
        action();
    }
    m_now = end;
}

void Schedule::Erase(Items::iterator item) noexcept {
    m_byOwner.erase({item->second.owner, item->first});
    m_byId.erase(item->second.id);
    m_items.erase(item);
}
