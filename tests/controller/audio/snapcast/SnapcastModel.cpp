#include "tests/controller/audio/snapcast/SnapcastModel.h"

#include <algorithm>
#include <stdexcept>

namespace controller::audio::test {

SnapcastModel::SnapcastModel() {
    state.isThere = true;
    state.address = "127.0.0.1";
    state.streams = {{"music", "pipe", "48000:16:2", 0},
                     {"radio", "pipe", "48000:16:2", 0},
                     {"announcements", "tcp", "48000:16:2", 4953}};
    state.groups = {
        {"g-music", "music", false, {{"bath", true, {80, false}}, {"kitchen", true, {100, false}}}},
        {"g-radio", "radio", false, {{"hall", true, {50, false}}}}};
}

SnapcastGroup* SnapcastModel::Find(const std::string& group) {
    const auto place = std::find_if(state.groups.begin(), state.groups.end(),
                                    [&](const SnapcastGroup& known) { return known.id == group; });
    return place != state.groups.end() ? &*place : nullptr;
}

SnapcastGroup& SnapcastModel::GroupOf(const std::string& client) {
    const SnapcastGroup* const group = state.GroupOf(client);
    if (group == nullptr)
        throw std::runtime_error("no client " + client);
    return *Find(group->id);
}

SnapcastClient& SnapcastModel::Client(const std::string& id) {
    auto& clients = GroupOf(id).clients;
    return *std::find_if(clients.begin(), clients.end(), [&](const auto& client) { return client.id == id; });
}

std::string SnapcastModel::SetVolume(const std::string& client, const SnapcastVolume& volume) {
    if (state.GroupOf(client) == nullptr)
        return "Client not found";
    Client(client).volume = volume;
    return "";
}

std::string SnapcastModel::SetStream(const std::string& group, const std::string& stream) {
    if (Find(group) == nullptr)
        return "Group not found";
    if (state.FindStream(stream) == nullptr)
        return "Stream not found";
    Find(group)->stream = stream;
    return "";
}

std::string SnapcastModel::SetMute(const std::string& group, bool isMuted) {
    if (Find(group) == nullptr)
        return "Group not found";
    Find(group)->isMuted = isMuted;
    return "";
}

std::string SnapcastModel::SetClients(const std::string& group, const std::vector<std::string>& clients) {
    if (Find(group) == nullptr)
        return "Group not found";
    const std::string stream = Find(group)->stream;
    std::vector<SnapcastClient> members;
    for (const std::string& id : clients) {
        members.push_back(Client(id));
        auto& former = GroupOf(id).clients;
        former.erase(
            std::find_if(former.begin(), former.end(), [&](const auto& one) { return one.id == id; }));
    }
    const std::vector<SnapcastClient> left = Find(group)->clients;
    Find(group)->clients = members;
    for (const SnapcastClient& client : left)
        state.groups.push_back({"g-" + std::to_string(++m_lastGroup), stream, false, {client}});
    state.groups.erase(std::remove_if(state.groups.begin(), state.groups.end(),
                                      [](const SnapcastGroup& one) { return one.clients.empty(); }),
                       state.groups.end());
    return "";
}

std::string SnapcastModel::Text() const {
    std::vector<std::string> groups;
    for (const SnapcastGroup& group : state.groups) {
        auto clients = group.clients;
        std::sort(clients.begin(), clients.end(),
                  [](const auto& one, const auto& other) { return one.id < other.id; });
        std::string text;
        for (const SnapcastClient& client : clients)
            text += (text.empty() ? "" : "+") + client.id + "=" + std::to_string(client.volume.percent) +
                    (client.volume.isMuted ? "m" : "");
        groups.push_back(text + ":" + group.stream + (group.isMuted ? "(muted)" : ""));
    }
    std::sort(groups.begin(), groups.end());
    std::string all;
    for (const std::string& group : groups)
        all += (all.empty() ? "" : " ") + group;
    return all;
}

} // namespace controller::audio::test
