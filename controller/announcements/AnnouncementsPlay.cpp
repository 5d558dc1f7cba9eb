// How announcements are played, and those that are there for one play alone.
#include "controller/announcements/AnnouncementXml.h"
#include "controller/announcements/Announcements.h"
#include "controller/announcements/RawRequest.h"
#include "host/Conversion.h"

#include <utility>

namespace controller {

Announcements::Outcome Announcements::NoneWith(std::uint32_t id) {
    return {
        {AgentAnswer::Kind::Unknown, "", "there is no announcement " + std::to_string(id), ""}, nullptr, ""};
}

void Announcements::Play(std::uint32_t id, const Done& done) {
    if (!Find(id)) {
        done(NoneWith(id));
        return;
    }
    Command("execute_announcement", {{"id", std::to_string(id)}}, done);
}

void Announcements::PlayQueued(std::uint32_t id, const Done& done) {
    m_driverOnly.Assert();
    const AnnouncementPointer announcement = Find(id);
    if (!announcement) {
        done(NoneWith(id));
        return;
    }
    m_asked.insert(id);
    done({m_parts.agent.Command("execute_announcement", {{"id", std::to_string(id)}}), announcement, ""});
}

void Announcements::Dismiss(const Done& done) {
    Command("ANNOUNCEMENT_DISMISSED", {}, done);
}

Announcements::Outcome Announcements::AddPassing(Announcement announcement) {
    m_driverOnly.Assert();
    announcement.house.isPassing = true;
    m_isAsking = true;
    AgentAnswer answer = AskToAdd({{"announcement", announcement_xml::ToXml(announcement)}});
    m_isAsking = false;
    if (answer.tag != "success") {
        CheckIn(kSoon); // it may have been stored before something failed
        return {std::move(answer), nullptr, ""};
    }
    const std::uint32_t id = vq::ToULong(answer.value);
    (void)TakeAnew(id, &announcement.house);
    Write(id, [](const std::string& /*error*/) {
        // It is gone before anybody could miss it.
    });
    return {std::move(answer), Find(id), ""};
}

Announcements::List Announcements::WithPassing() const {
    m_driverOnly.Assert();
    List list;
    list.reserve(m_all.size());
    for (const auto& [id, announcement] : m_all)
        list.push_back(announcement);
    return list;
}

bool Announcements::IsPassing(std::uint32_t id) const {
    const AnnouncementPointer announcement = Find(id);
    return announcement && announcement->house.isPassing;
}

} // namespace controller
