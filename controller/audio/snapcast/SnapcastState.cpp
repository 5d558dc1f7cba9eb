#include "controller/audio/snapcast/SnapcastState.h"

#include "controller/audio/snapcast/SnapcastJson.h"
#include "controller/driver/Text.h"

#include <algorithm>
#include <stdexcept>

namespace controller::audio {

namespace {

using Json = nlohmann::json;

constexpr std::uint16_t kUsualSourcePort = 4953;
constexpr const char* kNoServer = "what answers is no Snapcast server";

template <class Thing>
const Thing* FindById(const std::vector<Thing>& things, const std::string& id) {
    const auto place =
        std::find_if(things.begin(), things.end(), [&](const Thing& thing) { return thing.id == id; });
    return place != things.end() ? &*place : nullptr;
}

SnapcastClient ReadClient(const Json& json) {
    const Json& volume = json.at("config").at("volume");
    return {json.at("id").get<std::string>(),
            json.at("connected").get<bool>(),
            {std::min(volume.at("percent").get<unsigned>(), 100U), volume.at("muted").get<bool>()}};
}

SnapcastGroup ReadGroup(const Json& json) {
    SnapcastGroup group{json.at("id").get<std::string>(),
                        json.at("stream_id").get<std::string>(),
                        json.at("muted").get<bool>(),
                        {}};
    for (const Json& client : json.at("clients"))
        group.clients.push_back(ReadClient(client));
    return group;
}

SnapcastStream ReadStream(const Json& json) {
    const Json& uri = json.at("uri");
    if (!uri.is_object())
        throw std::runtime_error(kNoServer);
    const std::string host = TextIn(uri, "host");
    const auto colon = host.rfind(':');
    const auto port = colon == std::string::npos
                          ? std::nullopt
                          : ReadNumber<std::uint16_t>(host.substr(colon + 1), 1, 65535);
    const auto query = uri.find("query");
    return {json.at("id").get<std::string>(), TextIn(uri, "scheme"),
            query != uri.end() ? TextIn(*query, "sampleformat") : "", port.value_or(kUsualSourcePort)};
}

} // namespace

std::vector<std::string> SnapcastGroup::Members() const {
    std::vector<std::string> members;
    members.reserve(clients.size());
    for (const SnapcastClient& client : clients)
        members.push_back(client.id);
    return members;
}

const SnapcastGroup* SnapcastState::FindGroup(const std::string& id) const {
    return FindById(groups, id);
}

const SnapcastGroup* SnapcastState::GroupOf(const std::string& client) const {
    const auto place = std::find_if(groups.begin(), groups.end(), [&](const SnapcastGroup& group) {
        return FindById(group.clients, client) != nullptr;
    });
    return place != groups.end() ? &*place : nullptr;
}

const SnapcastClient* SnapcastState::FindClient(const std::string& id) const {
    const SnapcastGroup* const group = GroupOf(id);
    return group != nullptr ? FindById(group->clients, id) : nullptr;
}

SnapcastVolume SnapcastState::VolumeOf(const std::string& client) const {
    const SnapcastClient* const found = FindClient(client);
    return found != nullptr ? found->volume : SnapcastVolume();
}

const SnapcastStream* SnapcastState::FindStream(const std::string& id) const {
    return FindById(streams, id);
}

SnapcastState ReadSnapcastState(const std::string& result) {
    try {
        const Json server = Json::parse(result).at("server");
        SnapcastState state;
        state.isThere = true;
        for (const Json& group : server.at("groups"))
            state.groups.push_back(ReadGroup(group));
        for (const Json& stream : server.at("streams"))
            state.streams.push_back(ReadStream(stream));
        return state;
    } catch (const Json::exception&) {
        throw std::runtime_error(kNoServer);
    }
}

} // namespace controller::audio
