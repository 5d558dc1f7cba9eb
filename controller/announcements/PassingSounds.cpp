#include "controller/announcements/PassingSounds.h"

#include <algorithm>
#include <utility>

namespace controller {

namespace {

/// What is over is forgotten a moment later.
constexpr std::chrono::seconds kMoment{1};
constexpr std::chrono::minutes kAtOnce{0};

} // namespace

PassingSounds::PassingSounds(const std::vector<std::string>& left, Parts parts)
    : m_parts(std::move(parts))
    , m_sweep(m_parts.driver, "sounds that were heard once")
    , m_subscription(m_parts.feed.Subscribe([this](const Event& event) { Take(event); })) {
    for (const std::string& file : left)
        m_all[file] = {m_parts.driver.Now(), true};
    if (!m_all.empty())
        SweepIn(kAtOnce);
}

void PassingSounds::Add(const std::string& file) {
    m_driverOnly.Assert();
    m_all[file] = {m_parts.driver.Now(), false};
    if (!m_sweep.IsRunning())
        SweepIn(kUnused);
}

void PassingSounds::Take(const Event& event) {
    if (const auto* removed = std::get_if<events::MediaRemoved>(&event.data))
        m_all.erase(removed->name);
    if (m_all.empty())
        return;
    if (std::holds_alternative<events::AnnouncementStarted>(event.data))
        for (auto& [file, entry] : m_all)
            entry.wasUsed = entry.wasUsed || IsUsed(file);
    if (std::holds_alternative<events::AnnouncementEnded>(event.data))
        SweepIn(kMoment);
}

bool PassingSounds::IsUsed(const std::string& file) const {
    const auto all = m_parts.announcements.WithPassing();
    return std::any_of(all.begin(), all.end(), [&file](const AnnouncementPointer& announcement) {
        return announcement->audio.file + ".wav" == file;
    });
}

void PassingSounds::SweepIn(IScheduler::Duration delay) {
    m_sweep.Start(delay, [this] { Sweep(); });
}

void PassingSounds::Sweep() {
    m_driverOnly.Assert();
    std::vector<std::string> gone;
    for (const auto& [file, entry] : m_all)
        if ((entry.wasUsed || m_parts.driver.Now() - entry.since >= kUnused) && !IsUsed(file))
            gone.push_back(file);
    for (const std::string& file : gone) {
        m_all.erase(file);
        m_parts.remove(file);
    }
    if (!m_all.empty())
        SweepIn(kUnused);
}

} // namespace controller
