#include "controller/audio/IRoomPlayer.h"
#include "controller/audio/Output.h"
#include "controller/audio/OutputDescription.h"
#include "controller/audio/home_assistant/HomeAssistantDesk.h"
#include "controller/audio/home_assistant/HomeAssistantPlay.h"
#include "controller/audio/home_assistant/HomeAssistantRoom.h"

#include <string>
#include <utility>
#include <vector>

namespace controller::audio {

namespace {

/// A room that is a player of Home Assistant: what it does is done on the desk's thread.
class HousePlayer final : public IRoomPlayer {
public:
    HousePlayer(const PlayerOrder& order, const HomeAssistantRoom& room)
        : m_desk(order.context.houses)
        , m_play(std::make_shared<HomeAssistantPlay>(order, room, *m_desk)) {}

    void Start(OnEvent onEvent) override {
        m_desk->Post([play = m_play, onEvent = std::move(onEvent)] { play->Begin(onEvent); });
    }
    void SetVolume(unsigned volume) override { m_play->SetVolume(volume); }
    void Stop() override {
        m_desk->Post([play = m_play] { play->Stop(); });
    }
    void Abort() override {
        m_desk->Post([play = m_play] { play->Abort(); });
    }

private:
    const std::shared_ptr<HomeAssistantDesk> m_desk;
    const std::shared_ptr<HomeAssistantPlay> m_play;
};

} // namespace

Output CreateHomeAssistantOutput(const std::string& text) {
    PlayerOutput output;
    output.needsWholeSound = true;
    output.make = [room = ReadHomeAssistantRoom(text)](const PlayerOrder& order) {
        return std::make_shared<HousePlayer>(order, room);
    };
    return output;
}

OutputFacts FactsOfHomeAssistant(const std::string& text) {
    const HomeAssistantRoom room = ReadHomeAssistantRoom(text);
    return {{room.player + " of " + room.server.Name()}, DoubtsAbout(room), true};
}

/// What the player is, Home Assistant is asked for each announcement; what is wrong on this machine is known
/// before.
std::vector<Health> AskHomeAssistant(const std::vector<std::string>& texts,
                                     const OutputContext& /*context*/) {
    std::vector<Health> answers;
    for (const std::string& text : texts) {
        const auto doubts = DoubtsAbout(ReadHomeAssistantRoom(text));
        answers.push_back(doubts.empty() ? Health{} : Health{Health::State::Unheard, doubts.front()});
    }
    return answers;
}

} // namespace controller::audio
