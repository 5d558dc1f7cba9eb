#include "controller/audio/snapcast/SnapcastHealth.h"

#include "controller/audio/Output.h"
#include "controller/audio/snapcast/SnapcastLink.h"
#include "controller/audio/snapcast/SnapcastPlace.h"

#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/io_context.hpp>

#include <chrono>
#include <map>
#include <memory>
#include <set>
#include <utility>
#include <vector>

namespace controller::audio {

namespace {

constexpr const char* kFormat = "48000:16:2";

/// What servers have, by their names.
class SnapcastSurvey final {
public:
    void Add(const SnapcastPlace& place) {
        const std::string server = place.Server();
        if (!m_states.emplace(server, SnapcastState{}).second)
            return;
        m_states[server].reason = "does not answer";
        m_links.push_back(std::make_shared<SnapcastLink>(m_context, SnapcastHost{place.host, place.port},
                                                         [this, server](const SnapcastState& state) {
                                                             m_states[server] = state;
                                                             m_answered.insert(server);
                                                             if (m_answered.size() == m_links.size())
                                                                 m_context->stop();
                                                         }));
    }

    /// Of all of them at once: those that hang take no longer than one.
    [[nodiscard]] std::map<std::string, SnapcastState> Run() {
        for (const auto& link : m_links)
            link->Look();
        // A search for a name may have nothing to wait for here.
        const auto work = boost::asio::make_work_guard(*m_context);
        (void)m_context->run_for(SnapcastLink::kAnswer + std::chrono::milliseconds(200));
        for (const auto& link : m_links)
            link->Close();
        return m_states;
    }

private:
    const std::shared_ptr<boost::asio::io_context> m_context = std::make_shared<boost::asio::io_context>(1);
    std::map<std::string, SnapcastState> m_states;
    std::vector<std::shared_ptr<SnapcastLink>> m_links;
    std::set<std::string> m_answered;
};

/// Whether a house file can name it: servers take any id.
bool IsNameable(const std::string& client) {
    return !client.empty() && client.find_first_of(" \t\n\v\f\r=") == std::string::npos;
}

Health HealthOfClient(const SnapcastPlace& place, const SnapcastState& state) {
    const std::string server = place.Server();
    const std::string reason = state.isThere ? WhyNotHeard(state, server, place.client, place.stream)
                                             : "the Snapcast server " + server + " " + state.reason;
    return {reason.empty() ? Health::State::Healthy : Health::State::Unheard, reason};
}

} // namespace

std::string WhyNotHeard(const SnapcastState& state,
                        const std::string& server,
                        const std::string& client,
                        const std::string& stream) {
    const SnapcastClient* const known = state.FindClient(client);
    const SnapcastStream* const source = state.FindStream(stream);
    const std::string named = "the Snapcast server " + server;
    if (known == nullptr)
        return named + " knows no client \"" + client + "\"";
    if (!known->isConnected)
        return "the client \"" + client + "\" is not connected to " + named;
    if (source == nullptr)
        return named + " has no stream \"" + stream +
               "\"; it needs a line in its snapserver.conf: source = tcp://0.0.0.0:4953?name=" + stream;
    if (source->scheme != "tcp")
        return "the stream \"" + stream + "\" of " + named +
               " is no tcp:// source, and nothing can be fed to it";
    if (source->format != kFormat)
        return "the stream \"" + stream + "\" of " + named + " is " + source->format +
               "; it must be sampleformat=" + kFormat;
    return "";
}

std::vector<FoundOutput> FindClients(const std::vector<std::string>& texts,
                                     const OutputContext& /*context*/) {
    SnapcastSurvey survey;
    std::map<std::string, std::string> options; ///< of the rooms at the server, which fit its other clients
    for (const std::string& text : texts) {
        const SnapcastPlace place = ReadSnapcastPlace(text);
        survey.Add(place);
        options.emplace(place.Server(), text.substr(text.find(' ')));
    }
    std::vector<FoundOutput> clients;
    for (const auto& [server, state] : survey.Run())
        for (const SnapcastGroup& group : state.groups)
            for (const SnapcastClient& client : group.clients)
                if (client.isConnected && IsNameable(client.id))
                    clients.push_back({"snapcast",
                                       client.id + " (" + server + ")",
                                       {"snapcast", client.id + options.at(server)}});
    return clients;
}

std::vector<Health> AskSnapcast(const std::vector<std::string>& texts, const OutputContext& /*context*/) {
    SnapcastSurvey survey;
    std::vector<SnapcastPlace> places;
    places.reserve(texts.size());
    for (const std::string& text : texts) {
        places.push_back(ReadSnapcastPlace(text));
        survey.Add(places.back());
    }
    const auto states = survey.Run();
    std::vector<Health> answers;
    answers.reserve(places.size());
    for (const SnapcastPlace& place : places)
        answers.push_back(HealthOfClient(place, states.at(place.Server())));
    return answers;
}

} // namespace controller::audio
