#include "tests/controller/audio/PlayFixture.h"
#include "tests/controller/audio/home_assistant/TestHouse.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <future>
#include <map>

#include <sys/stat.h>

namespace controller::audio::test {

namespace {

using nlohmann::json;
using Then = HouseReply::Then;

constexpr const char* kSecretToken = "eyJ.secret.token";
constexpr const char* kToPlay = "POST /api/services/media_player/play_media";
constexpr const char* kToStop = "POST /api/services/media_player/media_stop";

HouseReply StateOf(const std::string& state, const json& attributes = json::object()) {
    return {200, json{{"state", state}, {"attributes", attributes}}.dump()};
}

} // namespace

/// A real engine, and a house with players that each do something of their own.
class AudioEngineHomeAssistantTest : public PlayFixture {
protected:
    AudioEngineHomeAssistantTest() : m_tokenFile(m_folder.Path("token")) {
        WriteBytes(m_tokenFile, std::string(kSecretToken) + "\n");
        chmod(m_tokenFile.c_str(), 0600);
    }

    [[nodiscard]] std::string Player(const std::string& name, std::uint16_t port) const {
        return "home_assistant: media_player." + name + " url=http://127.0.0.1:" + std::to_string(port) +
               " token_file=" + m_tokenFile;
    }
    [[nodiscard]] std::string Player(const std::string& name) const { return Player(name, m_house.Port()); }

    static EngineLimits Limits() {
        EngineLimits limits = EngineHarness::PatientLimits();
        limits.houses.fetch = std::chrono::seconds(20);
        limits.houses.answer = std::chrono::seconds(20);
        return limits;
    }

    [[nodiscard]] std::vector<HouseRequest> Asked(const std::string& line) const {
        auto asked = m_house.Asked();
        asked.erase(std::remove_if(asked.begin(), asked.end(),
                                   [&](const HouseRequest& one) { return one.line != line; }),
                    asked.end());
        return asked;
    }

    /// Whether the first player that was told to play has its sound; one that leaves before finds none.
    [[nodiscard]] bool HasFetched() const { return m_addresses.WasFetched("/api/once/1.wav"); }

    /// What the house does: by the player's name, as long as nothing else is said.
    HouseReply Answer(const HouseRequest& request) {
        if (request.authorization != std::string("Bearer ") + kSecretToken)
            return {401, "401: Unauthorized"};
        const std::string kStates = "GET /api/states/media_player.";
        if (request.line.compare(0, kStates.size(), kStates) == 0) {
            const std::string player = request.line.substr(kStates.size());
            if (player == "slow")
                m_slow.wait_for(std::chrono::seconds(20));
            const auto state = m_states.find(player);
            return state != m_states.end() ? state->second : StateOf("playing");
        }
        const json order = json::parse(request.body);
        const std::string player = order["entity_id"].get<std::string>().substr(13);
        if (request.line == kToPlay && m_silent.count(player) == 0) {
            const auto url = order["media_content_id"].get<std::string>();
            EXPECT_TRUE(m_addresses.Fetch(url.substr(url.find("/api/once")))) << url;
        }
        const auto reply = m_orders.find(player);
        return reply != m_orders.end() ? reply->second : HouseReply{200, "[]"};
    }

    const std::string m_tokenFile;
    TestAddresses m_addresses;
    std::map<std::string, HouseReply> m_states;
    std::map<std::string, HouseReply> m_orders;
    std::set<std::string> m_silent; ///< players that fetch nothing
    std::promise<void> m_answer;    ///< Until then the house does not say what the slow player is.
    const std::future<void> m_slow = m_answer.get_future();
    TestHouse m_house{[this](const HouseRequest& request) {
        return Answer(request);
    }};
};

TEST_F(AudioEngineHomeAssistantTest, APlayerIsToldToFetchTheClipAndHasEndedAfterItsLength) {
    EngineHarness harness({Player("kitchen"), FileOutput("room.wav")}, Limits(), EngineHarness::Borrows::No,
                          &m_addresses);
    harness.Engine().SetVolume(1, 35);
    harness.OpenWithAllRooms();
    const auto before = std::chrono::steady_clock::now();
    const auto result = harness.PlayToEnd(m_clip);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->error, "");
    EXPECT_EQ(result->rooms, (Rooms{1, 2}));
    EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(500));
    EXPECT_EQ(m_addresses.Count(), 1U) << "a player may ask again";
    EXPECT_TRUE(harness.CloseAndWait());
    EXPECT_EQ(m_addresses.Count(), 0U);
    ExpectWholeClip("room.wav");
    const std::string file = *m_addresses.LastFile();
    EXPECT_EQ(file.substr(44),
              std::string(reinterpret_cast<const char*>(m_melody.data()), m_melody.size() * 2));
    const auto orders = Asked(kToPlay);
    ASSERT_EQ(orders.size(), 1U);
    EXPECT_EQ(json::parse(orders[0].body), (json{{"entity_id", "media_player.kitchen"},
                                                 {"media_content_id", "http://127.0.0.1:8765/api/once/1.wav"},
                                                 {"media_content_type", "music"},
                                                 {"announce", true},
                                                 {"extra", {{"volume", 35}}}}));
    EXPECT_EQ(m_house.Asked().size(), 2U) << "and nothing else is asked";
    EXPECT_TRUE(harness.Troubles().empty());
}

TEST_F(AudioEngineHomeAssistantTest, EachThatIsNotHeardSaysWhyAndTheOthersPlayWhole) {
    m_states["nobody"] = {404, R"({"message":"Entity not found."})"};
    m_states["failing"] = {500, "500 Internal Server Error"};
    m_states["away"] = StateOf("unavailable");
    m_states["helper"] = StateOf("playing", {{"entity_id", {"media_player.a", "media_player.b"}}});
    m_states["joined"] = StateOf("playing", {{"group_members", {"media_player.joined", "media_player.b"}}});
    m_states["other"] = {200, "<html>"};
    m_states["hanging"] = {200, "", Then::Nothing};
    m_states["broken"] = {200, "", Then::BreakOff};
    m_orders["refusing"] = {400, "400: Bad Request"};
    m_orders["crashing"] = {500, "500 Internal Server Error"};
    m_orders["quiet"] = {200, "", Then::Nothing};
    m_orders["cut"] = {200, "", Then::BreakOff};
    m_silent = {"deaf", "quiet"};
    std::uint16_t nobodysPort = 0;
    {
        const TestHouse gone([](const HouseRequest&) { return HouseReply(); });
        nobodysPort = gone.Port();
    }
    const std::string at = "http://127.0.0.1:" + std::to_string(m_house.Port());
    const std::vector<std::pair<std::string, std::string>> expected{
        {Player("nobody"), at + " knows no media_player.nobody"},
        {Player("failing"), at + " answers 500 to media_player.failing"},
        {Player("away"), "media_player.away is unavailable at " + at},
        {Player("helper"), "media_player.helper is a group of players"},
        {Player("joined"), "media_player.joined is a group of players"},
        {Player("other"), at + " answers as Home Assistant does not"},
        {Player("hanging"), at + " has not answered within 2500 ms"},
        {Player("broken"), at + " has broken off: "},
        {Player("refusing"), at + " answers 400 to media_player.refusing"},
        {Player("crashing"), at + " answers 500 to media_player.crashing"},
        {Player("quiet"), at + " has not answered within 2000 ms"},
        {Player("cut"), at + " has broken off: "},
        {Player("deaf"),
         "media_player.deaf has not fetched the sound from http://127.0.0.1:8765 within 2000 ms"},
        {Player("refused", nobodysPort), "cannot be reached: Connection refused"},
        {Player("x") + "-missing",
         "the token of Home Assistant cannot be read from " + m_tokenFile + "-missing"},
    };
    std::vector<std::string> outputs;
    outputs.reserve(expected.size() + 2);
    for (const auto& [output, reason] : expected)
        outputs.push_back(output);
    outputs.push_back(Player("good"));
    outputs.push_back(FileOutput("room.wav"));
    EngineLimits limits = Limits();
    limits.houses = {std::chrono::milliseconds(2500), std::chrono::milliseconds(2000)};
    EngineHarness harness(outputs, limits, EngineHarness::Borrows::No, &m_addresses);
    harness.OpenWithAllRooms();
    const auto result = harness.PlayToEnd(m_clip);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->error, "");
    EXPECT_EQ(result->rooms, (Rooms{16, 17}));
    EXPECT_TRUE(harness.CloseAndWait());
    ExpectWholeClip("room.wav");
    std::map<std::uint32_t, std::string> reasons;
    for (const RoomTrouble& trouble : harness.Troubles())
        reasons[trouble.roomId] += trouble.reason;
    EXPECT_EQ(reasons.size(), expected.size());
    for (std::size_t index = 0; index < expected.size(); ++index)
        EXPECT_NE(reasons[static_cast<std::uint32_t>(index + 1)].find(expected[index].second),
                  std::string::npos)
            << expected[index].first << ": " << reasons[static_cast<std::uint32_t>(index + 1)];
    EXPECT_EQ(m_addresses.Count(), 0U);
    for (const std::string& line : harness.Log())
        EXPECT_EQ(line.find(kSecretToken), std::string::npos) << line;
}

TEST_F(AudioEngineHomeAssistantTest, ATokenThatIsNotTakenIsSaid) {
    WriteBytes(m_tokenFile, "another");
    EngineHarness harness({Player("kitchen"), FileOutput("room.wav")}, Limits(), EngineHarness::Borrows::No,
                          &m_addresses);
    harness.OpenWithAllRooms();
    const auto result = harness.PlayToEnd(m_clip);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->rooms, Rooms{2});
    ASSERT_EQ(harness.Troubles().size(), 1U);
    EXPECT_EQ(harness.Troubles()[0].reason, "http://127.0.0.1:" + std::to_string(m_house.Port()) +
                                                " does not take the token in " + m_tokenFile);
    // It is read anew: the room is heard as soon as it is right.
    WriteBytes(m_tokenFile, kSecretToken);
    EXPECT_TRUE(harness.CloseAndWait());
    harness.OpenWithAllRooms();
    const auto again = harness.PlayToEnd(m_clip);
    ASSERT_TRUE(again);
    EXPECT_EQ(again->rooms, (Rooms{1, 2}));
}

TEST_F(AudioEngineHomeAssistantTest, AStopTellsThePlayerAndTakesTheSoundAway) {
    const std::string longClip = m_folder.Path("long.wav");
    WriteSound(longClip, Melody(std::size_t{kRate} * 20, kChannels), kChannels, kRate);
    EngineHarness harness({Player("kitchen")}, Limits(), EngineHarness::Borrows::No, &m_addresses);
    harness.OpenWithAllRooms();
    std::optional<PlayResult> result;
    harness.Engine().Play(longClip, [&](const PlayResult& played) { result = played; });
    ASSERT_TRUE(harness.RunUntil([&] { return HasFetched(); }));
    harness.Engine().StopPlay();
    ASSERT_TRUE(harness.RunUntil([&] { return result.has_value(); }));
    EXPECT_TRUE(result->isStopped);
    EXPECT_EQ(result->error, "");
    EXPECT_EQ(m_addresses.Count(), 0U);
    const auto stops = Asked(kToStop);
    ASSERT_EQ(stops.size(), 1U);
    EXPECT_EQ(json::parse(stops[0].body), (json{{"entity_id", "media_player.kitchen"}}));
    EXPECT_TRUE(harness.Troubles().empty());
    EXPECT_TRUE(harness.CloseAndWait());
    EXPECT_EQ(Asked(kToStop).size(), 1U);
}

TEST_F(AudioEngineHomeAssistantTest, AStreamThatIsClosedRightBehindAStopStillStopsThePlayer) {
    const std::string longClip = m_folder.Path("long.wav");
    WriteSound(longClip, Melody(std::size_t{kRate} * 20, kChannels), kChannels, kRate);
    EngineHarness harness({Player("kitchen")}, Limits(), EngineHarness::Borrows::No, &m_addresses);
    harness.OpenWithAllRooms();
    harness.Engine().Play(longClip, {});
    ASSERT_TRUE(harness.RunUntil([&] { return HasFetched(); }));
    harness.Engine().StopPlay();
    ASSERT_TRUE(harness.CloseAndWait());
    EXPECT_EQ(Asked(kToStop).size(), 1U);
    EXPECT_EQ(m_addresses.Count(), 0U);
    EXPECT_TRUE(harness.Troubles().empty());
}

TEST_F(AudioEngineHomeAssistantTest, ARoomThatLeavesInMidPlayIsStoppedAndTheOthersPlayOn) {
    EngineHarness harness({Player("kitchen"), FileOutput("room.wav")}, Limits(), EngineHarness::Borrows::No,
                          &m_addresses);
    harness.OpenWithAllRooms();
    std::optional<PlayResult> result;
    harness.Engine().Play(m_clip, [&](const PlayResult& played) { result = played; });
    ASSERT_TRUE(harness.RunUntil([&] { return HasFetched(); }));
    harness.Engine().RemoveRoom(1);
    ASSERT_TRUE(harness.RunUntil([&] { return result.has_value(); }));
    EXPECT_EQ(result->rooms, Rooms{2});
    EXPECT_TRUE(harness.CloseAndWait());
    EXPECT_EQ(Asked(kToStop).size(), 1U);
    ExpectWholeClip("room.wav");
}

TEST_F(AudioEngineHomeAssistantTest, APlayerWhoseHouseAnswersAfterTheStartPlaysAllAndMissesNoBeginning) {
    EngineLimits limits = Limits();
    limits.readiness = std::chrono::seconds(1);
    EngineHarness harness({Player("slow"), FileOutput("room.wav")}, limits, EngineHarness::Borrows::No,
                          &m_addresses);
    harness.OpenWithAllRooms();
    std::optional<PlayResult> result;
    harness.Engine().Play(m_clip, [&](const PlayResult& played) { result = played; });
    ASSERT_TRUE(
        harness.RunUntil([&] { return SizeOf("room.wav") > 0 && Recorded("room.wav").First() >= 0; }));
    m_answer.set_value();
    ASSERT_TRUE(harness.RunUntil([&] { return result.has_value(); }));
    EXPECT_EQ(result->error, "");
    EXPECT_EQ(result->rooms, (Rooms{1, 2}));
    EXPECT_EQ(Asked(kToPlay).size(), 1U);
    EXPECT_TRUE(harness.Troubles().empty());
    EXPECT_TRUE(harness.CloseAndWait());
    ExpectWholeClip("room.wav");
}

TEST_F(AudioEngineHomeAssistantTest, AHouseThatIsGoneInMidPlayIsSaidAndTheOthersPlayWhole) {
    const std::string longer = m_folder.Path("longer.wav");
    WriteSound(longer, Melody(std::size_t{kRate} * 2, kChannels), kChannels, kRate);
    EngineHarness harness({Player("kitchen"), FileOutput("room.wav")}, Limits(), EngineHarness::Borrows::No,
                          &m_addresses);
    harness.OpenWithAllRooms();
    std::optional<PlayResult> result;
    harness.Engine().Play(longer, [&](const PlayResult& played) { result = played; });
    ASSERT_TRUE(harness.RunUntil([&] { return m_addresses.WasFetched("/api/once/1.wav"); }));
    m_house.Die();
    ASSERT_TRUE(harness.RunUntil([&] { return result.has_value(); }));
    EXPECT_EQ(result->rooms, Rooms{2});
    ASSERT_EQ(harness.Troubles().size(), 1U);
    EXPECT_EQ(harness.Troubles()[0].roomId, 1U);
    EXPECT_EQ(harness.Troubles()[0].kind, RoomTrouble::Kind::Failed);
}

TEST_F(AudioEngineHomeAssistantTest, WhereTheVolumeIs0NobodyIsAskedToPlay) {
    EngineHarness harness({Player("kitchen")}, Limits(), EngineHarness::Borrows::No, &m_addresses);
    harness.Engine().SetVolume(1, 0);
    harness.OpenWithAllRooms();
    const auto result = harness.PlayToEnd(m_clip);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->rooms, Rooms{1});
    EXPECT_TRUE(Asked(kToPlay).empty());
}

TEST_F(AudioEngineHomeAssistantTest, AnEngineThatEndsWaitsForNoHouse) {
    m_states["hanging"] = {200, "", Then::Nothing};
    EngineHarness harness(
        {Player("hanging"),
         "home_assistant: media_player.x url=http://nosuch.invalid token_file=" + m_tokenFile},
        Limits(), EngineHarness::Borrows::No, &m_addresses);
    harness.OpenWithAllRooms();
    ASSERT_TRUE(harness.RunUntil([&] { return !m_house.Asked().empty(); }));
    const auto before = std::chrono::steady_clock::now();
    harness.DestroyEngine();
    EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(15));
}

} // namespace controller::audio::test
