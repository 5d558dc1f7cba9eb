#include "controller/rooms/Popups.h"

#include <algorithm>
#include <utility>

namespace controller {

Popups::Popups(IScheduler& scheduler, const Variables& variables, EventFeed& feed)
    : m_scheduler(scheduler)
    , m_variables(variables)
    , m_feed(feed)
    , m_subscription(feed.Subscribe([this](const Event& event) {
        if (const auto* change = std::get_if<events::VariableChanged>(&event.data))
            VariableHasChanged(*change);
    })) {}

std::string Popups::MessageOf(const Wanted& wanted) const {
    if (!wanted.binding)
        return wanted.message;
    return m_variables.Value(wanted.binding->device, wanted.binding->variable).value_or("");
}

std::uint64_t Popups::Show(std::uint32_t navigator, const Wanted& wanted) {
    m_driverOnly.Assert();
    End(navigator, events::PopupEnd::Replaced);
    const auto duration = wanted.delay.count() == 0 ? kLongest : wanted.delay;
    Shown shown{++m_lastNumber, wanted.show, wanted, m_scheduler.Now() + duration,
                std::make_unique<Alarm>(m_scheduler, "the end of a popup")};
    shown.alarm->Start(duration, [this, navigator] { End(navigator, events::PopupEnd::TimeIsUp); });
    m_shown.insert_or_assign(navigator, std::move(shown));
    m_feed.Publish(events::PopupShown{m_lastNumber, navigator, MessageOf(wanted), wanted.image, duration,
                                      wanted.hasOkButton});
    return m_lastNumber;
}

void Popups::End(std::uint32_t navigator, events::PopupEnd why) {
    const auto shown = m_shown.extract(navigator);
    if (!shown.empty())
        m_feed.Publish(events::PopupHidden{shown.mapped().number, navigator, why});
}

void Popups::DismissOn(std::uint32_t navigator) {
    m_driverOnly.Assert();
    const auto place = m_shown.find(navigator);
    if (place == m_shown.end())
        return;
    std::vector<std::uint32_t> navigators;
    for (const auto& [id, shown] : m_shown)
        if (shown.show == place->second.show)
            navigators.push_back(id);
    for (const std::uint32_t id : navigators)
        End(id, events::PopupEnd::Dismissed);
}

bool Popups::Dismiss(std::uint64_t number) {
    m_driverOnly.Assert();
    const auto place = std::find_if(m_shown.begin(), m_shown.end(),
                                    [number](const auto& entry) { return entry.second.number == number; });
    if (place == m_shown.end())
        return false;
    DismissOn(place->first);
    return true;
}

void Popups::HideAll() {
    m_driverOnly.Assert();
    while (!m_shown.empty())
        End(m_shown.begin()->first, events::PopupEnd::Hidden);
}

std::vector<Popups::Popup> Popups::Standing() const {
    m_driverOnly.Assert();
    std::vector<Popup> standing;
    for (const auto& [navigator, shown] : m_shown) {
        const auto remaining = std::max(shown.end - m_scheduler.Now(), IScheduler::Duration{0});
        standing.push_back({shown.number, navigator, MessageOf(shown.wanted), shown.wanted.image, remaining,
                            shown.wanted.hasOkButton, shown.show});
    }
    return standing;
}

void Popups::VariableHasChanged(const events::VariableChanged& change) {
    for (const auto& [navigator, shown] : m_shown) {
        const auto& binding = shown.wanted.binding;
        if (binding && binding->device == change.device && binding->variable == change.variable)
            m_feed.Publish(events::PopupChanged{shown.number, navigator, change.value});
    }
}

} // namespace controller
