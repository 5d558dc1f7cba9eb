#include "controller/house/HouseFile.h"
#include "tests/controller/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace controller {

class HouseFileOutputsTest : public testing::Test {
protected:
    HouseFileOutputsTest() { m_folder.Write("media/chime.wav", ""); }

    [[nodiscard]] House ReadRooms(const std::vector<std::string>& outputs) const {
        std::string text = "name: H\nmedia_folder: media\ndata_folder: data\nrooms:\n";
        for (std::size_t index = 0; index < outputs.size(); ++index)
            text += "  - {id: " + std::to_string(index + 1) + ", name: A, output: " + outputs[index] + "}\n";
        return ReadHouse(text, m_folder.Path(), "house.yaml");
    }

    [[nodiscard]] std::string TextOf(const std::string& output) const {
        const House house = ReadRooms({output});
        return house.rooms[0].output.kind + "|" + house.rooms[0].output.text;
    }

    [[nodiscard]] std::string MistakeOf(const std::string& output) const {
        try {
            (void)ReadRooms({output});
        } catch (const HouseError& error) {
            return error.what();
        }
        return "";
    }

    TemporaryFolder m_folder;
};

TEST_F(HouseFileOutputsTest, WhatBelongsToAnOutputIsReadFromKeysInAnyOrderAndFromOneText) {
    EXPECT_EQ(TextOf("{multicast: \"239.255.10.1:5004\"}"), "multicast|239.255.10.1:5004");
    EXPECT_EQ(TextOf("{codec: l16, multicast: \"239.255.10.1:5004\", ttl: 4}"),
              "multicast|239.255.10.1:5004 codec=l16 ttl=4");
    EXPECT_EQ(TextOf("\"multicast: 239.255.10.1:5004 dscp=0\""), "multicast|239.255.10.1:5004 dscp=0");
    EXPECT_EQ(
        TextOf("{snapcast: kitchen, server: \"nas:1705\", stream: said, buffer_ms: 400, source_port: 4954}"),
        "snapcast|kitchen server=nas:1705 stream=said buffer_ms=400 source_port=4954");
}

TEST_F(HouseFileOutputsTest, KeysThatDoNotBelongToAKindAreRefused) {
    const auto expect = [this](const std::string& output, const std::string& reason) {
        EXPECT_NE(MistakeOf(output).find("house.yaml:5: rooms[1].output: " + reason), std::string::npos)
            << MistakeOf(output);
    };
    expect("{multicast: \"239.1.1.1:1\", volume: 3}",
           "\"volume\" is not known; beside multicast there may be codec, ttl, dscp, interface, urgent");
    expect("{multicast: \"239.1.1.1:1\", urgent: \"239.1.1.1:1\"}",
           "\"multicast:\" urgent \"239.1.1.1:1\" is where everything goes");
    expect("{file: a.wav, ttl: 3}", "\"ttl\" is not known; beside file nothing may stand");
    expect("{multicast: \"239.1.1.1:1\", codec: l 16}", "codec \"l 16\" must be one word");
    expect("{multicast: \"239.1.1.1:1\", codec: g722}", "\"multicast:\" codec \"g722\" is neither");
    expect("{snapcast: kitchen, server: nas, buffer_ms: 79}",
           "\"snapcast:\" buffer_ms \"79\" is not a whole number from 80 to 10000");
    expect("{snapcast: kitchen, server: \"nas:0\"}", "\"snapcast:\" server: the port \"0\" is not a port");
    expect("{snapcast: kitchen}", "\"snapcast:\" needs the server of kitchen");
    expect("{multicast: \"239.1.1.1:1\", codec: [l16]}", "must be one output");
    expect("{multicast: \"239.1.1.1:1\", file: a.wav}", "must be one output");
    expect("{ttl: 3, codec: l16}", "\"ttl, codec\" is no kind of output; there are \"auto\"");
    expect("{snapclient: kitchen, server: nas}", "\"snapclient, server\" is no kind of output");
    expect("{puls: default}", "\"puls\" is no kind of output");
    expect("\"pulse: default, duck=off\"", "a comma stands behind \"default\"");
    expect("{snapcast: kitchen, server: \"http://nas\"}",
           "\"snapcast:\" server \"http://nas\" is not a host such as nas");
    expect("{}", "must be one output");
}

TEST_F(HouseFileOutputsTest, ATokenStandsBesideTheHouseFileAndWhatIsWrongWithItIsToldInALine) {
    const std::string player =
        "{home_assistant: media_player.kitchen, url: \"http://10.0.0.2\", token_file: ";
    EXPECT_EQ(TextOf(player + "/etc/token, our_url: \"http://10.0.0.1:80\"}"),
              "home_assistant|media_player.kitchen url=http://10.0.0.2 token_file=/etc/token "
              "our_url=http://10.0.0.1:80");
    const std::string file = (m_folder.Path() / "token").string();
    EXPECT_EQ(TextOf(player + "token}"),
              "home_assistant|media_player.kitchen url=http://10.0.0.2 token_file=" + file);
    const House house = ReadRooms({player + "token}", player + "token}"});
    ASSERT_EQ(house.doubts.size(), 3U);
    EXPECT_EQ(house.doubts[0].line, 5);
    EXPECT_EQ(house.doubts[0].key, "rooms[1].output");
    EXPECT_EQ(house.doubts[0].text,
              "the token of Home Assistant cannot be read from " + file + ": No such file or directory");
    EXPECT_EQ(house.doubts[2].key, "rooms[2].output");
    EXPECT_NE(house.doubts[2].text.find(
                  "media_player.kitchen of http://10.0.0.2:8123 is the address of rooms[1] as well"),
              std::string::npos);
}

TEST_F(HouseFileOutputsTest, WhatIsProbablyNotMeantIsTakenAndTold) {
    const House house = ReadRooms({"{multicast: \"239.255.1.1:5004\"}", "silent",
                                   "{multicast: \"239.255.1.1:5004\"}", "{multicast: \"239.255.1.1:5006\"}",
                                   "{multicast: \"224.0.1.75:5004\"}", "{multicast: \"239.192.1.1:5004\"}"});
    EXPECT_FALSE(house.rooms[0].isAnswering);
    EXPECT_TRUE(house.rooms[1].isAnswering);
    ASSERT_EQ(house.doubts.size(), 3U);
    EXPECT_EQ(house.doubts[0].line, 7);
    EXPECT_EQ(house.doubts[0].key, "rooms[3].output");
    EXPECT_NE(house.doubts[0].text.find("239.255.1.1:5004 is the address of rooms[1] as well"),
              std::string::npos);
    EXPECT_EQ(house.doubts[1].line, 9);
    EXPECT_NE(house.doubts[1].text.find("given out to the whole world"), std::string::npos);
    EXPECT_EQ(house.doubts[2].line, 10);
    EXPECT_NE(house.doubts[2].text.find("a ttl of 1 pass"), std::string::npos);
}

TEST_F(HouseFileOutputsTest, AnUrgentAddressIsDoubtedAsTheUsualOneIs) {
    const House house = ReadRooms({"{multicast: \"239.255.1.1:5004\", urgent: \"239.255.2.1:5004\"}",
                                   "{multicast: \"239.255.1.2:5004\", urgent: \"239.255.2.1:5004\"}",
                                   "{multicast: \"239.255.2.1:5004\", urgent: \"224.0.1.75:5004\"}"});
    ASSERT_EQ(house.doubts.size(), 3U);
    EXPECT_EQ(house.doubts[0].key, "rooms[2].output");
    EXPECT_NE(house.doubts[0].text.find("239.255.2.1:5004 is the address of rooms[1] as well"),
              std::string::npos);
    EXPECT_EQ(house.doubts[1].key, "rooms[3].output");
    EXPECT_NE(house.doubts[1].text.find("224.0.1.75:5004 is given out to the whole world"),
              std::string::npos);
    EXPECT_EQ(house.doubts[2].key, "rooms[3].output");
    EXPECT_NE(house.doubts[2].text.find("239.255.2.1:5004 is the address of rooms[1] as well"),
              std::string::npos);
}

TEST_F(HouseFileOutputsTest, AListHasTenThousandEntriesAndNoMore) {
    const std::vector<std::string> most(10'000, "silent");
    EXPECT_EQ(ReadRooms(most).rooms.size(), 10'000U);
    auto more = most;
    more.emplace_back("silent");
    try {
        (void)ReadRooms(more);
        ADD_FAILURE() << "10,001 rooms were taken";
    } catch (const HouseError& error) {
        EXPECT_STREQ(error.what(), "house.yaml:4: rooms: has 10001 entries; 10000 at most");
    }
}

} // namespace controller
