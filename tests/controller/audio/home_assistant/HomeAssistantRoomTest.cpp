#include "controller/audio/home_assistant/HomeAssistantRoom.h"

#include "tests/controller/audio/EngineHarness.h"
#include "tests/controller/audio/Sounds.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include <sys/stat.h>

namespace controller::audio::test {

namespace {

std::string RefusalOfHouse(const std::string& text) {
    try {
        (void)ReadHomeAssistantRoom(text);
    } catch (const std::invalid_argument& error) {
        return error.what();
    }
    return {};
}

void ExpectRefusedHouse(const std::string& text, const std::string& reason) {
    EXPECT_NE(RefusalOfHouse(text).find(reason), std::string::npos) << text << ": " << RefusalOfHouse(text);
}

std::string TroubleWithToken(const std::string& file) {
    try {
        return "no trouble, but " + ReadHouseToken(file);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
}

} // namespace

TEST(HomeAssistantRoomTest, APlayerIsReadWithItsServerAndToken) {
    const auto room = ReadHomeAssistantRoom("media_player.kitchen_2 token_file=/etc/token "
                                            "url=http://192.168.1.10 our_url=https://home.example/announce/");
    EXPECT_EQ(room.player, "media_player.kitchen_2");
    EXPECT_EQ(room.server.Name(), "http://192.168.1.10:8123");
    EXPECT_EQ(room.tokenFile, "/etc/token");
    EXPECT_EQ(room.ourUrl, "https://home.example/announce");
    const auto server = [](const std::string& url) {
        return ReadHomeAssistantRoom("media_player.a token_file=t url=" + url).server;
    };
    EXPECT_EQ(server("https://ha.example").port, 443);
    EXPECT_TRUE(server("https://ha.example").isSecure);
    EXPECT_EQ(server("https://ha.example:8123/").Name(), "https://ha.example:8123");
    EXPECT_EQ(server("http://[fd00::7]:80/core").host, "fd00::7");
    EXPECT_EQ(server("http://[fd00::7]:80/core").Authority(), "[fd00::7]");
    EXPECT_EQ(server("http://[fd00::7]:80/core").path, "/core");
}

TEST(HomeAssistantRoomTest, WhatIsNoPlayerOfAServerIsRefusedWithWhatWouldBeRight) {
    ExpectRefusedHouse("", "needs a player of Home Assistant, not \"\"; such as `output: {home_assistant: "
                           "media_player.kitchen, url: \"http://192.168.1.10:8123\", token_file: ");
    ExpectRefusedHouse("light.kitchen url=http://a token_file=t", "not \"light.kitchen\"");
    ExpectRefusedHouse("media_player.Kitchen url=http://a token_file=t", "not \"media_player.Kitchen\"");
    ExpectRefusedHouse("media_player. url=http://a token_file=t", "not \"media_player.\"");
    ExpectRefusedHouse("media_player.a token_file=t", "needs url");
    ExpectRefusedHouse("media_player.a url=http://a", "needs token_file");
    ExpectRefusedHouse("media_player.a url=http://a token_file=t loud=1", "not \"loud=1\"");
    for (const char* url : {"", "a:8123", "ftp://a", "http://", "http:///x", "http://a:0", "http://a:x",
                            "http://a@b", "http://[::1", "http://a/?b"}) {
        ExpectRefusedHouse(std::string("media_player.a token_file=t url=") + url,
                           std::string("url \"") + url + "\" ");
        ExpectRefusedHouse(std::string("media_player.a token_file=t url=http://a our_url=") + url, "our_url");
    }
}

TEST(HomeAssistantRoomTest, ATokenIsOneWordThatNotEverybodyCanRead) {
    const TemporaryFolder folder;
    const std::string file = folder.Path("token");
    EXPECT_EQ(TroubleWithToken(file),
              "the token of Home Assistant cannot be read from " + file + ": No such file or directory");
    WriteBytes(file, " eyJ.abc\n");
    chmod(file.c_str(), 0644);
    EXPECT_EQ(TroubleWithToken(file),
              "everybody on this machine can read the token in " + file + "; `chmod 640` takes that away");
    chmod(file.c_str(), 0640);
    EXPECT_EQ(ReadHouseToken(file), "eyJ.abc");
    for (const char* content : {"", " \n", "two words", "a\r\nX-Other: b", "\x01", "\xc3\xbc"}) {
        WriteBytes(file, content);
        EXPECT_NE(TroubleWithToken(file).find("there is no token of Home Assistant in "), std::string::npos)
            << content;
    }
}

} // namespace controller::audio::test
