#include "controller/audio/Output.h"
#include "tests/controller/audio/snapcast/StandInServer.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace controller::audio::test {

namespace {

std::string TextOf(const StandInServer& server, const std::string& client) {
    return server.Output(client).substr(std::string("snapcast: ").size());
}

} // namespace

TEST(SnapcastHealthTest, SaysOfEachClientWhetherItWouldBeHeardAndWhyNotWhateverOneServerDoes) {
    StandInServer server;
    StandInServer hanging(StandInServer::Manner::Hangs);
    StandInServer gone;
    server.Change([](SnapcastModel& model) { model.Client("bath").isConnected = false; });
    gone.Kill();
    const std::vector<std::string> texts{TextOf(hanging, "kitchen"), TextOf(server, "kitchen"),
                                         TextOf(server, "bath"),     TextOf(server, "attic"),
                                         TextOf(gone, "kitchen"),    TextOf(server, "hall") + " stream=said"};
    const auto answers = AskSnapcast(texts, {});
    ASSERT_EQ(answers.size(), texts.size());
    const std::vector<std::string> reasons{"does not answer",
                                           "",
                                           "the client \"bath\" is not connected to the Snapcast server",
                                           "knows no client \"attic\"",
                                           "cannot be reached: Connection refused",
                                           "has no stream \"said\"; it needs a line in its snapserver.conf"};
    for (std::size_t index = 0; index < reasons.size(); ++index) {
        EXPECT_EQ(answers[index].state,
                  reasons[index].empty() ? Health::State::Healthy : Health::State::Unheard);
        EXPECT_NE(answers[index].reason.find(reasons[index]), std::string::npos) << answers[index].reason;
        EXPECT_EQ(answers[index].reason.empty(), reasons[index].empty());
    }
    EXPECT_EQ(server.Text(), "bath=80+kitchen=100:music hall=50:radio") << "nothing is changed";
}

TEST(SnapcastHealthTest, FindsTheClientsThatAreConnectedToTheServersOfTheHouseWhateverOneServerDoes) {
    StandInServer server;
    StandInServer hanging(StandInServer::Manner::Hangs);
    server.Change([](SnapcastModel& model) {
        model.Client("bath").isConnected = false;
        // What no house file can name cannot be tested either.
        for (const char* const id : {"", "a=b", "two words", "two\twords"})
            model.GroupOf("hall").clients.push_back({id, true, {}});
    });
    std::vector<std::string> found;
    for (const FoundOutput& place : FindClients({TextOf(hanging, "kitchen"), TextOf(server, "attic")}, {})) {
        EXPECT_EQ(place.kind, "snapcast");
        found.push_back(place.output.text);
    }
    EXPECT_EQ(found, (std::vector<std::string>{TextOf(server, "kitchen"), TextOf(server, "hall")}));
}

} // namespace controller::audio::test
