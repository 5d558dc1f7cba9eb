#include "controller/announcements/Announcements.h"

#include "controller/announcements/AnnouncementXml.h"
#include "controller/announcements/RawRequest.h"
#include "host/Conversion.h"

#include <algorithm>
#include <utility>

namespace controller {

namespace {

std::string IdText(std::uint32_t id) {
    return std::to_string(id);
}

/// Playing an announcement without a timeout gives it one, which is no change to people.
std::string TagOf(const Announcement& announcement) {
    Announcement shown = announcement;
    if (shown.video.timeoutMs == 0)
        shown.video.timeoutMs = 30000;
    const std::string text = announcement_xml::ToXml(shown) + announcement_xml::ToXml(shown.house);
    return '"' + std::to_string(std::hash<std::string>{}(text)) + '"';
}

/// Nothing where the agent has answered that there is none.
std::optional<Announcement> RecordIn(const AgentAnswer& answer, std::uint32_t id) {
    if (answer.element.Get() == nullptr || answer.element->FindChild("id") == nullptr)
        return std::nullopt;
    auto announcement = announcement_xml::FromXml(*answer.element);
    announcement.id = id;
    return announcement;
}

bool AreSame(const Announcement& one, const Announcement& other) {
    return announcement_xml::ToXml(one) == announcement_xml::ToXml(other) &&
           one.house.tags == other.house.tags && one.house.isUrgent == other.house.isUrgent;
}

} // namespace

Announcements::Announcements(Parts parts)
    : m_parts(parts)
    , m_played(parts.scheduler, "taking over what playing has changed")
    , m_check(parts.scheduler, "comparing the announcements with the agent's")
    , m_subscription(parts.feed.Subscribe([this](const Event& event) { Take(event); })) {
    m_parts.store.ListenToAnnouncements([this](const std::string& error) {
        if (error.empty()) {
            m_unsaved.clear();
            m_parts.feed.Publish(events::StateSaved{});
            return;
        }
        m_parts.log.Error("The announcements could not be written to the disk: " + error +
                          "; they are kept in memory and written as soon as it is possible");
        m_parts.feed.Publish(events::StateNotSaved{error});
    });
}

Announcements::~Announcements() {
    m_parts.store.ListenToAnnouncements({});
}

AnnouncementPointer Announcements::Find(std::uint32_t id) const {
    m_driverOnly.Assert();
    const auto place = m_all.find(id);
    return place != m_all.end() ? place->second : nullptr;
}

std::shared_ptr<const Announcements::List> Announcements::All() {
    m_driverOnly.Assert();
    if (!m_list) {
        List list;
        list.reserve(m_all.size());
        for (const auto& [id, announcement] : m_all)
            if (!announcement->house.isPassing)
                list.push_back(announcement);
        m_list = std::make_shared<const List>(std::move(list));
    }
    return m_list;
}

std::string Announcements::NameOf(std::uint32_t id) const {
    const AnnouncementPointer announcement = Find(id);
    if (announcement)
        return announcement->name;
    return m_playing && m_playing->id == id ? m_playing->name : "";
}

void Announcements::Add(const Announcement& announcement, const Done& done) {
    const Parameters parameters{{"announcement", announcement_xml::ToXml(announcement)}};
    Ask(raw_request::kAdd, parameters, 0, &announcement.house, done);
}

void Announcements::Replace(const Announcement& announcement, const Done& done) {
    const Parameters parameters{{"announcement", announcement_xml::ToXml(announcement)}};
    Ask("modify_announcement", parameters, announcement.id, &announcement.house, done);
}

void Announcements::Remove(std::uint32_t id, const Done& done) {
    Ask("remove_announcement", {{"id", IdText(id)}}, id, nullptr, done);
}

void Announcements::PutRoom(std::uint32_t id, const Announcement::Room& room, const Done& done) {
    Ask("add_room", {{"id", IdText(id)}, {"room", announcement_xml::ToXml(room)}}, id, nullptr, done);
}

void Announcements::RemoveRoom(std::uint32_t id, std::uint32_t room, const Done& done) {
    Ask("remove_room", {{"id", IdText(id)}, {"room_id", IdText(room)}}, id, nullptr, done);
}

void Announcements::PutNavigator(std::uint32_t id,
                                 const Announcement::Navigator& navigator,
                                 const Done& done) {
    // The agent leaves a navigator that is there as it is: to be changed it has to be taken out first.
    const auto former = Find(id);
    const auto isOther = [&navigator](const Announcement::Navigator& one) {
        return one.id == navigator.id &&
               (one.room != navigator.room || one.isOnscreen != navigator.isOnscreen);
    };
    m_isAsking = true;
    if (former && std::any_of(former->navigators.begin(), former->navigators.end(), isOther))
        (void)m_parts.agent.Ask("remove_navigator",
                                {{"id", IdText(id)}, {"navigator_id", IdText(navigator.id)}});
    Ask("add_navigator", {{"id", IdText(id)}, {"navigator", announcement_xml::ToXml(navigator)}}, id, nullptr,
        done);
}

void Announcements::RemoveNavigator(std::uint32_t id, std::uint32_t navigator, const Done& done) {
    Ask("remove_navigator", {{"id", IdText(id)}, {"navigator_id", IdText(navigator)}}, id, nullptr, done);
}

void Announcements::Command(const std::string& name, const Parameters& parameters, const Done& done) {
    m_driverOnly.Assert();
    const auto played = raw_request::Played(name, parameters);
    if (played) {
        // The agent would have an unknown id wait as well, and play whatever has it by then.
        if (*played != 0 && !Find(*played)) {
            done(NoneWith(*played));
            return;
        }
        if (*played != 0)
            m_asked.insert(*played);
        m_parts.feed.Publish(events::PlayAsked{*played});
    }
    done({m_parts.agent.Command(name, parameters), played ? Find(*played) : nullptr, ""});
}

void Announcements::Request(const std::string& name, const Parameters& parameters, const Done& done) {
    m_driverOnly.Assert();
    if (name == "get_announcements" && m_parts.agent.IsRunning()) {
        // The agent would be busy for long; its answer is known.
        done({{AgentAnswer::Kind::Reply, "announcements", announcement_xml::ToXml(WithPassing()), ""},
              nullptr,
              ""});
        return;
    }
    m_isAsking = true;
    AgentAnswer answer = name == raw_request::kAdd ? AskToAdd(raw_request::WithoutOwnId(parameters))
                                                   : m_parts.agent.Request(name, parameters);
    m_isAsking = false;
    const auto concerns = raw_request::ConcernOf(name, parameters, answer);
    if (concerns.areAll)
        CheckIn(kSoon);
    if (concerns.id)
        Settle(std::move(answer), *concerns.id, nullptr, done);
    else
        done({std::move(answer), nullptr, ""});
}

/// `id` is 0 when the agent's answer tells it.
void Announcements::Ask(const char* request,
                        const Parameters& parameters,
                        std::uint32_t id,
                        const HouseAddition* house,
                        const Done& done) {
    m_driverOnly.Assert();
    m_isAsking = true;
    AgentAnswer answer = id == 0 ? AskToAdd(parameters) : m_parts.agent.Ask(request, parameters);
    m_isAsking = false;
    const bool isDone = answer.tag == "success";
    if (id == 0 && isDone)
        id = vq::ToULong(answer.value);
    else if (id == 0)
        CheckIn(kSoon); // it may have been stored before something failed
    Settle(std::move(answer), id, isDone ? house : nullptr, done);
}

/// The agent gives the id of what was removed last to the next one, though it may still be waiting to play
/// it, and people's pages and scripts may mean the former one by it. It passes over ids that are in use: so
/// whatever gets such an id keeps it until the agent has chosen another.
AgentAnswer Announcements::AskToAdd(const Parameters& parameters) {
    AgentAnswer answer = m_parts.agent.Request(raw_request::kAdd, parameters);
    while (answer.tag == "success" && m_removed.count(vq::ToULong(answer.value)) != 0) {
        AgentAnswer another = m_parts.agent.Request(raw_request::kAdd, parameters);
        (void)m_parts.agent.Ask("remove_announcement", {{"id", answer.value}});
        answer = std::move(another);
    }
    if (answer.tag == "success") // it never goes back behind this one
        m_removed.erase(m_removed.begin(), m_removed.lower_bound(vq::ToULong(answer.value)));
    return answer;
}

/// What a request has made of the announcement, however it was answered, is taken over, told and written.
void Announcements::Settle(AgentAnswer answer,
                           std::uint32_t id,
                           const HouseAddition* house,
                           const Done& done) {
    const bool wasPassing = IsPassing(id);
    const Change change = TakeAnew(id, house);
    const AnnouncementPointer now = Find(id);
    const bool isStored = change == Change::None && now && answer.tag == "success";
    Tell(isStored ? Change::Stored : change, id, wasPassing || IsPassing(id));
    if (change == Change::None && m_unsaved.count(id) == 0)
        done({std::move(answer), now, ""});
    else
        Write(id, [answer, now, done](const std::string& error) { done({answer, now, error}); });
}

Announcements::Change Announcements::TakeAnew(std::uint32_t id, const HouseAddition* house) {
    m_driverOnly.Assert();
    if (id == 0)
        return Change::None; // the agent gives nobody what it keeps under this id
    const AgentAnswer answer = m_parts.agent.Ask("get_announcement", {{"id", IdText(id)}});
    if (answer.kind != AgentAnswer::Kind::Reply)
        return Change::None;
    return Put(id, RecordIn(answer, id), house);
}

/// The house's part stays as it is, unless another one is given.
Announcements::Change
Announcements::Put(std::uint32_t id, std::optional<Announcement> taken, const HouseAddition* house) {
    const AnnouncementPointer former = Find(id);
    if (!taken) {
        if (!former)
            return Change::None;
        m_all.erase(id);
        m_asked.erase(id);
        m_removed.insert(id);
        m_list.reset();
        return Change::Removed;
    }
    if (house != nullptr)
        taken->house = *house;
    else if (former)
        taken->house = former->house;
    if (former && AreSame(*former, *taken))
        return Change::None;
    taken->tag = TagOf(*taken);
    m_all[id] = std::make_shared<const Announcement>(std::move(*taken));
    m_list.reset();
    return Change::Stored;
}

void Announcements::Tell(Change change, std::uint32_t id, bool isPassing) {
    if (isPassing)
        return;
    if (change == Change::Stored)
        m_parts.feed.Publish(events::AnnouncementStored{id, Find(id)});
    else if (change == Change::Removed)
        m_parts.feed.Publish(events::AnnouncementRemoved{id});
}

AnnouncementRow Announcements::RowOf(std::uint32_t id) const {
    const AnnouncementPointer announcement = Find(id);
    if (!announcement)
        return {id, "", ""};
    return {id, announcement_xml::ToXml(*announcement), announcement_xml::ToXml(announcement->house)};
}

void Announcements::Write(std::uint32_t id, WriteDone done) {
    m_unsaved.insert(id);
    m_parts.store.WriteAnnouncements({RowOf(id)}, std::move(done));
}

void Announcements::Save(WriteDone done) {
    m_driverOnly.Assert();
    m_parts.store.WriteAll(std::move(done));
}

} // namespace controller
