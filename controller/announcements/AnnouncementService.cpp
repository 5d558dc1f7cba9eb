#include "controller/announcements/AnnouncementService.h"

#include "host/Conversion.h"
#include "host/VqXML.h"

#include <algorithm>
#include <array>
#include <optional>

namespace controller {

namespace {

/// So many names are remembered of what was played.
constexpr std::size_t kMaxNames = 1000;

std::string Find(const Parameters& parameters, const std::string& name) {
    const auto place = std::find_if(parameters.begin(), parameters.end(),
                                    [&](const auto& parameter) { return parameter.first == name; });
    return place != parameters.end() ? place->second : "";
}

/// Requests that change nothing, so that nothing has to be compared behind them.
bool IsReading(const std::string& request) {
    return request == "get_announcement" || request == "get_announcements";
}

std::uint32_t IdInDescription(const std::string& xml) {
    const auto document = VqXML::CreateXmlDocument(xml);
    return document ? document->GetRootNode()->GetChildValueAsULong("id") : 0;
}

/// The announcement that a request has stored, changed or removed; nothing when it has not, or that is not
/// known.
std::optional<std::uint32_t>
ChangedBy(const std::string& request, const Parameters& parameters, const AgentAnswer& answer) {
    static constexpr std::array kById{"remove_announcement", "add_room",      "modify_room",
                                      "remove_room",         "add_navigator", "remove_navigator"};
    if (answer.tag != "success")
        return std::nullopt;
    if (request == "add_announcement")
        return vq::ToULong(answer.value);
    if (request == "modify_announcement")
        return IdInDescription(Find(parameters, "announcement"));
    if (std::find(kById.begin(), kById.end(), request) != kById.end())
        return vq::ToULong(Find(parameters, "id"));
    return std::nullopt;
}

} // namespace

AnnouncementService::AnnouncementService(AgentHost& agent, StateKeeper& keeper, EventFeed& feed)
    : m_agent(agent)
    , m_keeper(keeper)
    , m_feed(feed) {}

AgentAnswer AnnouncementService::Announcement(std::uint32_t announcement) {
    return m_agent.Ask("get_announcement", {{"id", std::to_string(announcement)}});
}

bool AnnouncementService::LearnName(std::uint32_t announcement) {
    const AgentAnswer answer = Announcement(announcement);
    if (answer.element.Get() == nullptr || answer.element->FindChild("id") == nullptr)
        return false;
    if (m_names.size() >= kMaxNames)
        m_names.clear();
    m_names[announcement] = answer.element->GetChildValue("name");
    return true;
}

std::string AnnouncementService::NameOf(std::uint32_t announcement) const {
    const auto place = m_names.find(announcement);
    return place != m_names.end() ? place->second : "";
}

std::size_t AnnouncementService::Count() {
    const AgentAnswer answer = m_agent.Ask("get_announcements", {});
    std::size_t count = 0;
    if (answer.element.Get() != nullptr)
        for (auto* child = answer.element->GetChildren()->First(); child != nullptr;
             child = answer.element->GetChildren()->Next())
            ++count;
    return count;
}

void AnnouncementService::Play(std::uint32_t announcement, const Done& done) {
    if (!LearnName(announcement)) {
        const std::string text = "there is no announcement " + std::to_string(announcement);
        done({{AgentAnswer::Kind::Unknown, "", text, ""}, ""});
        return;
    }
    Command("execute_announcement", {{"id", std::to_string(announcement)}}, done);
}

void AnnouncementService::Dismiss(const Done& done) {
    Command("ANNOUNCEMENT_DISMISSED", {}, done);
}

void AnnouncementService::Command(const std::string& name, const Parameters& parameters, const Done& done) {
    if (name == "execute_announcement") {
        const std::uint32_t announcement = vq::ToULong(Find(parameters, "id"));
        (void)LearnName(announcement);
        m_feed.Publish(events::PlayAsked{announcement});
    }
    const AgentAnswer answer = m_agent.Command(name, parameters);
    // Playing may change an announcement, as when it gives itself a timeout; nobody waits for that.
    if (name == "execute_announcement")
        m_keeper.SaveSoon(vq::ToULong(Find(parameters, "id")));
    else
        m_keeper.SaveSoon();
    done({answer, ""});
}

void AnnouncementService::Request(const std::string& name, const Parameters& parameters, const Done& done) {
    const AgentAnswer answer = m_agent.Request(name, parameters);
    if (IsReading(name) || answer.kind == AgentAnswer::Kind::Unknown ||
        answer.kind == AgentAnswer::Kind::NoAgent) {
        done({answer, ""});
        return;
    }
    const auto saved = [answer, done](const std::string& error) {
        done({answer, error});
    };
    const auto changed = ChangedBy(name, parameters, answer);
    if (!changed) {
        m_keeper.Save(saved);
        return;
    }
    PublishChange(name, *changed);
    m_keeper.Save(*changed, saved);
}

void AnnouncementService::PublishChange(const std::string& request, std::uint32_t announcement) {
    if (request == "remove_announcement")
        m_feed.Publish(events::AnnouncementRemoved{announcement});
    else
        m_feed.Publish(events::AnnouncementStored{announcement});
}

} // namespace controller
