#include "controller/audio/snapcast/SnapcastPlace.h"

#include "controller/audio/snapcast/SnapcastLaw.h"
#include "controller/audio/snapcast/SnapcastState.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace controller::audio::test {

namespace {

std::string MistakeIn(const std::string& text) {
    try {
        (void)ReadSnapcastPlace(text);
    } catch (const std::invalid_argument& error) {
        return error.what();
    }
    return "";
}

} // namespace

TEST(SnapcastPlaceTest, ReadsAClientWithEverythingBesideIt) {
    const SnapcastPlace usual = ReadSnapcastPlace("kitchen server=nas");
    EXPECT_EQ(usual.client, "kitchen");
    EXPECT_EQ(usual.Server(), "nas:1705");
    EXPECT_EQ(usual.stream, "announcements");
    EXPECT_EQ(usual.buffer, std::chrono::milliseconds(1000));
    EXPECT_FALSE(usual.sourcePort);
    const SnapcastPlace other = ReadSnapcastPlace(
        "02:fc:00:00:00:01 server=[fd00::5]:1800 stream=said buffer_ms=80 source_port=4954");
    EXPECT_EQ(other.client, "02:fc:00:00:00:01");
    EXPECT_EQ(other.Server(), "[fd00::5]:1800");
    EXPECT_EQ(other.stream, "said");
    EXPECT_EQ(other.buffer, std::chrono::milliseconds(80));
    EXPECT_EQ(other.sourcePort, 4954);
    EXPECT_EQ(ReadSnapcastPlace("a server=[::1]").Server(), "[::1]:1705");
}

TEST(SnapcastPlaceTest, TellsEachMistakeAndWhatWouldBeRight) {
    const std::vector<std::pair<std::string, std::string>> mistakes{
        {"", "needs the id of a client"},
        {"server=nas", "needs the id of a client"},
        {"kitchen", "needs the server of kitchen"},
        {"kitchen server=", "server \"\" is not a host"},
        {"kitchen server=http://nas", "server \"http://nas\" is not a host"},
        {"kitchen server=fd00::5", "server \"fd00::5\" is not a host"},
        {"kitchen server=fd00::5:99", "server \"fd00::5:99\" is not a host"},
        {"kitchen server=nas:0", "the port \"0\" is not a port"},
        {"kitchen server=nas:70000", "the port \"70000\" is not a port"},
        {"kitchen server=nas buffer_ms=79", "below 80 clients play nothing"},
        {"kitchen server=nas buffer_ms=1s", "buffer_ms \"1s\" is not a whole number from 80 to 10000"},
        {"kitchen server=nas source_port=0", "source_port \"0\" is not a port"},
        {"kitchen server=nas stream=", "stream is empty"},
        {"kitchen server=nas volume=3", "\"volume=3\" is not known"}};
    for (const auto& [text, reason] : mistakes)
        EXPECT_NE(MistakeIn(text).find(reason), std::string::npos) << text << ": " << MistakeIn(text);
}

TEST(SnapcastLawTest, IsThatOfClientsAsMeasuredAndMapsOursToTheNearestPercent) {
    const std::vector<std::pair<unsigned, double>> measured{{100, 1},      {90, 0.77145}, {75, 0.5137},
                                                            {50, 0.24025}, {30, 0.11055}, {10, 0.02875},
                                                            {1, 0.00255},  {0, 0}};
    for (const auto& [percent, gain] : measured)
        EXPECT_NEAR(SnapcastGain(percent), gain, 0.0001) << percent;
    EXPECT_EQ(SnapcastPercent(0), 0U);
    EXPECT_EQ(SnapcastPercent(1), 1U);
    EXPECT_EQ(SnapcastPercent(50), 33U);
    EXPECT_EQ(SnapcastPercent(100), 100U);
    for (unsigned volume = 25; volume <= 100; ++volume)
        EXPECT_NEAR(20 * std::log10(SnapcastGain(SnapcastPercent(volume)) / Gain(volume)), 0, 0.8) << volume;
}

TEST(SnapcastStateTest, ReadsGroupsClientsAndStreamsOfAServersStatus) {
    const SnapcastState state = ReadSnapcastState(R"({"server":{"groups":[{"id":"g","muted":true,"name":"",
        "stream_id":"default","clients":[{"id":"kitchen","connected":true,
        "config":{"instance":1,"latency":0,"name":"","volume":{"muted":true,"percent":37}}}]}],
        "server":{},"streams":[{"id":"default","status":"idle","uri":{"scheme":"pipe","host":"","path":"/tmp/f"}},
        {"id":"announcements","status":"idle","uri":{"scheme":"tcp","host":"0.0.0.0:4955","path":"",
        "query":{"sampleformat":"48000:16:2"}}},{"id":"other","uri":{"scheme":"tcp","host":"0.0.0.0"}}]}})");
    EXPECT_TRUE(state.isThere);
    ASSERT_NE(state.GroupOf("kitchen"), nullptr);
    EXPECT_TRUE(state.GroupOf("kitchen")->isMuted);
    EXPECT_EQ(state.GroupOf("kitchen")->stream, "default");
    EXPECT_EQ(state.FindClient("kitchen")->volume.percent, 37U);
    EXPECT_TRUE(state.FindClient("kitchen")->volume.isMuted);
    EXPECT_TRUE(state.FindClient("kitchen")->isConnected);
    EXPECT_EQ(state.FindClient("bath"), nullptr);
    EXPECT_EQ(state.FindStream("default")->scheme, "pipe");
    EXPECT_EQ(state.FindStream("announcements")->port, 4955);
    EXPECT_EQ(state.FindStream("announcements")->format, "48000:16:2");
    EXPECT_EQ(state.FindStream("other")->port, 4953);
}

TEST(SnapcastStateTest, RefusesWhatIsNoStatus) {
    for (const char* text :
         {"", "{", "[]", "null", "{}", R"({"server":1})", R"({"server":{"groups":[1],"streams":[]}})",
          R"({"server":{"groups":[],"streams":[{"id":1,"uri":{}}]}})",
          R"({"server":{"groups":[],"streams":[{"id":"a","uri":[]}]}})"})
        EXPECT_THROW((void)ReadSnapcastState(text), std::runtime_error) << text;
}

} // namespace controller::audio::test
