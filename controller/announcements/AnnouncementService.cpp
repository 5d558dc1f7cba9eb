#include "controller/announcements/AnnouncementService.h"

#include "host/Conversion.h"
#include "host/VqXML.h"

#include <algorithm>
#include <array>

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

} // namespace

AnnouncementService::AnnouncementService(AgentHost& agent, StateKeeper& keeper, EventFeed& feed)
    : m_agent(agent)
    , m_keeper(keeper)
    , m_feed(feed) {}

bool AnnouncementService::LearnName(std::uint32_t announcement) {
    const AgentAnswer answer = m_agent.Request("get_announcement", {{"id", std::to_string(announcement)}});
    const auto document = VqXML::CreateXmlDocument(answer.text);
    if (!document || document->GetRootNode()->FindChild("id") == nullptr)
        return false;
    if (m_names.size() >= kMaxNames)
        m_names.clear();
    m_names[announcement] = document->GetRootNode()->GetChildValue("name");
    return true;
}

std::string AnnouncementService::NameOf(std::uint32_t announcement) const {
    const auto place = m_names.find(announcement);
    return place != m_names.end() ? place->second : "";
}

std::size_t AnnouncementService::Count() {
    const auto document = VqXML::CreateXmlDocument(m_agent.Request("get_announcements", {}).text);
    std::size_t count = 0;
    if (document)
        for (auto* child = document->GetRootNode()->GetChildren()->First(); child != nullptr;
             child = document->GetRootNode()->GetChildren()->Next())
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
    PublishChange(name, parameters, answer);
    m_keeper.Save([answer, done](const std::string& error) { done({answer, error}); });
}

void AnnouncementService::PublishChange(const std::string& request,
                                        const Parameters& parameters,
                                        const AgentAnswer& answer) {
    static constexpr std::array kEdits{"add_room", "modify_room", "remove_room", "add_navigator",
                                       "remove_navigator"};
    if (answer.tag != "success")
        return;
    if (request == "add_announcement")
        m_feed.Publish(events::AnnouncementStored{vq::ToULong(answer.value)});
    else if (request == "modify_announcement")
        m_feed.Publish(events::AnnouncementStored{IdInDescription(Find(parameters, "announcement"))});
    else if (request == "remove_announcement")
        m_feed.Publish(events::AnnouncementRemoved{vq::ToULong(Find(parameters, "id"))});
    else if (std::find(kEdits.begin(), kEdits.end(), request) != kEdits.end())
        m_feed.Publish(events::AnnouncementStored{vq::ToULong(Find(parameters, "id"))});
}
