#include "controller/house/HouseFile.h"

#include "tests/controller/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace controller {

namespace {

/// What `token add` writes for a secret.
const std::string kHash = "scrypt:14:8:1:000102030405060708090a0b0c0d0e0f:"
                          "000102030405060708090a0b0c0d0e0f101112131415161718191a1b1c1d1e1f";

class HouseFileTest : public testing::Test {
protected:
    HouseFileTest() {
        m_folder.Write("media/chime.wav", "");
        m_folder.Write("first.xml", "<announcements/>");
        m_folder.Write("c.pem", "");
        m_folder.Write("k.pem", "");
    }

    [[nodiscard]] House Read(const std::string& text) const {
        return ReadHouse(text, m_folder.Path(), "house.yaml");
    }

    /// "line key", each mistake of a text, in their order.
    [[nodiscard]] std::vector<std::string> Mistakes(const std::string& text) const {
        std::vector<std::string> places;
        try {
            (void)Read(text);
        } catch (const HouseError& error) {
            for (const HouseMistake& mistake : error.Mistakes()) {
                EXPECT_FALSE(mistake.text.empty());
                places.push_back(std::to_string(mistake.line) + " " + mistake.key);
            }
        }
        return places;
    }

    /// The mistakes of what is added behind a good beginning of three lines.
    [[nodiscard]] std::vector<std::string> MistakesBehind(const std::string& text) const {
        return Mistakes("name: H\nmedia_folder: media\ndata_folder: data\n" + text);
    }

    /// An entry of the list of tokens, one line.
    [[nodiscard]] static std::string Token(const std::string& name, const std::string& rights) {
        return "  - {name: " + name + ", hash: \"" + kHash + "\", rights: " + rights + "}\n";
    }

    TemporaryFolder m_folder;
};

using Places = std::vector<std::string>;

TEST_F(HouseFileTest, EveryKeyIsRead) {
    const House house = Read(R"(name: My house
address: 192.168.1.5
port: 9000
media_folder: media
data_folder: /var/lib/house
first_announcements: first.xml
rooms:
  - id: 12
    name: Kitchen
    output: "file: takes/%n.wav"
    max_volume: 70
    start_volume: 25
    lead_silence_ms: 300
  - {id: 4294967295, name: Hall}
  - {id: 3, name: Bath, output: {gstreamer: fakesink}}
navigators:
  - {id: 5, name: Tablet, room: 12}
variables:
  - {device: 9, variable: 4, name: Outside, value: 21 °C}
  - {device: 9, variable: 5, name: Empty}
tokens:
  - {name: phone, hash: ")" + kHash +
                             R"(", rights: [play, "navigator:5"]}
tls:
  certificate: c.pem
  key: k.pem
)");
    EXPECT_EQ(house.name, "My house");
    EXPECT_EQ(house.address, "192.168.1.5");
    EXPECT_EQ(house.port, 9000);
    EXPECT_EQ(house.mediaFolder, m_folder.Path() / "media");
    EXPECT_EQ(house.dataFolder, "/var/lib/house");
    EXPECT_EQ(house.firstAnnouncements, m_folder.Path() / "first.xml");
    ASSERT_EQ(house.rooms.size(), 3U);
    EXPECT_EQ(house.rooms[0].id, 12U);
    EXPECT_EQ(house.rooms[0].name, "Kitchen");
    EXPECT_EQ(house.rooms[0].output.kind, "file");
    EXPECT_EQ(house.rooms[0].output.text, (m_folder.Path() / "takes/%n.wav").string());
    EXPECT_EQ(house.rooms[0].maxVolume, 70U);
    EXPECT_EQ(house.rooms[0].startVolume, 25U);
    EXPECT_EQ(house.rooms[0].leadSilenceMs, 300U);
    EXPECT_EQ(house.rooms[1].id, 4294967295U);
    EXPECT_EQ(house.rooms[1].output.kind, "auto");
    EXPECT_EQ(house.rooms[1].maxVolume, 100U);
    EXPECT_EQ(house.rooms[1].leadSilenceMs, 0U);
    EXPECT_EQ(house.rooms[2].output.kind, "gstreamer");
    EXPECT_EQ(house.rooms[2].output.text, "fakesink");
    ASSERT_EQ(house.navigators.size(), 1U);
    EXPECT_EQ(house.navigators[0].id, 5U);
    EXPECT_EQ(house.navigators[0].name, "Tablet");
    EXPECT_EQ(house.navigators[0].room, 12U);
    ASSERT_EQ(house.variables.size(), 2U);
    EXPECT_EQ(house.variables[0].device, 9U);
    EXPECT_EQ(house.variables[0].variable, 4U);
    EXPECT_EQ(house.variables[0].name, "Outside");
    EXPECT_EQ(house.variables[0].value, "21 °C");
    EXPECT_EQ(house.variables[1].value, "");
    ASSERT_EQ(house.tokens.size(), 1U);
    EXPECT_EQ(house.tokens[0].name, "phone");
    EXPECT_EQ(house.tokens[0].hash, kHash);
    EXPECT_EQ(house.tokens[0].rights.Texts(), (std::vector<std::string>{"play", "navigator:5"}));
    EXPECT_EQ(house.tls.certificate, m_folder.Path() / "c.pem");
    EXPECT_EQ(house.tls.key, m_folder.Path() / "k.pem");
}

TEST_F(HouseFileTest, WithoutAddressAndPortTheMachineAloneIsServedOn8765) {
    const House house = Read("name: H\nmedia_folder: media\ndata_folder: data\n");
    EXPECT_EQ(house.address, "127.0.0.1");
    EXPECT_EQ(house.port, 8765);
    EXPECT_EQ(house.dataFolder, m_folder.Path() / "data");
    EXPECT_TRUE(house.rooms.empty());
}

TEST_F(HouseFileTest, EveryMistakeIsToldInOneRun) {
    EXPECT_EQ(Mistakes(R"(nam: H
port: 70000
media_folder: nowhere
data_folder:
rooms:
  - id: 0
    name: Kitchen
    volume: 3
  - id: 2
    output: trumpet
)"),
              (Places{"1 name", "1 nam", "2 port", "3 media_folder", "4 data_folder", "6 rooms[1].id",
                      "8 rooms[1].volume", "9 rooms[2].name", "10 rooms[2].output"}));
}

TEST_F(HouseFileTest, AMistakeSaysFileLineKeyAndWhatWouldBeRight) {
    try {
        (void)Read("name: H\nmedia_folder: media\ndata_folder: data\nport: high\n");
        FAIL();
    } catch (const HouseError& error) {
        EXPECT_STREQ(error.what(), "house.yaml:4: port: \"high\" is not a whole number from 1 to 65535");
    }
}

TEST_F(HouseFileTest, UnknownKeysAreMistakesEverywhere) {
    EXPECT_EQ(MistakesBehind("colour: red\n"), Places{"4 colour"});
    EXPECT_EQ(MistakesBehind("rooms:\n  - {id: 1, name: A, x: 1}\n"), Places{"5 rooms[1].x"});
    EXPECT_EQ(MistakesBehind("rooms: [{id: 1, name: A}]\nnavigators:\n  - {id: 2, name: B, room: 1, y: 1}\n"),
              Places{"6 navigators[1].y"});
    EXPECT_EQ(MistakesBehind("tls: {certificate: c.pem, key: k.pem, z: 1}\n"), Places{"4 tls.z"});
}

TEST_F(HouseFileTest, IdsAreUniqueAcrossRoomsAndNavigators) {
    EXPECT_EQ(MistakesBehind("rooms:\n  - {id: 1, name: A}\n  - {id: 1, name: B}\n"),
              Places{"6 rooms[2].id"});
    EXPECT_EQ(MistakesBehind("rooms:\n  - {id: 1, name: A}\nnavigators:\n  - {id: 1, name: B, room: 1}\n"),
              Places{"7 navigators[1].id"});
}

TEST_F(HouseFileTest, IdsRunFrom1To4294967295) {
    for (const std::string id : {"0", "-1", "4294967296", "99999999999", "1.5", "one", "\"\""})
        EXPECT_EQ(MistakesBehind("rooms:\n  - {name: A, id: " + id + "}\n"), Places{"5 rooms[1].id"}) << id;
    EXPECT_EQ(MistakesBehind("rooms:\n  - {name: A}\n"), Places{"5 rooms[1].id"});
}

TEST_F(HouseFileTest, VolumesRunTo100AndTheStartIsNotAboveTheHighest) {
    EXPECT_EQ(MistakesBehind("rooms: [{id: 1, name: A, max_volume: 101}]\n"),
              Places{"4 rooms[1].max_volume"});
    EXPECT_EQ(MistakesBehind("rooms: [{id: 1, name: A, start_volume: 101}]\n").size(), 1U);
    EXPECT_EQ(MistakesBehind("rooms: [{id: 1, name: A, max_volume: 30, start_volume: 31}]\n"),
              Places{"4 rooms[1].start_volume"});
}

TEST_F(HouseFileTest, ANavigatorStandsInARoomOfTheHouse) {
    EXPECT_EQ(MistakesBehind("navigators:\n  - {id: 2, name: B, room: 7}\n"), Places{"5 navigators[1].room"});
}

TEST_F(HouseFileTest, AVariableStandsOnce) {
    EXPECT_EQ(MistakesBehind("variables:\n  - {device: 1, variable: 2, name: A}\n"
                             "  - {device: 1, variable: 2, name: B}\n"),
              Places{"6 variables[2].variable"});
}

TEST_F(HouseFileTest, VoicesAreReadAsTheyStand) {
    const House house = Read(R"(name: H
media_folder: media
data_folder: data
voices:
  - {name: Anna, language: de}
  - {name: Slt, engine: command, language: en, voice: slt, command: [flite, -voice, "{voice}", -o, /dev/stdout]}
  - {name: Thorsten, engine: wyoming, language: de-DE, voice: thorsten, host: piper.lan}
)");
    ASSERT_EQ(house.voices.size(), 3U);
    EXPECT_EQ(house.voices[0].name, "Anna");
    EXPECT_EQ(house.voices[0].engine, "espeak");
    EXPECT_EQ(house.voices[0].language, "de");
    EXPECT_EQ(house.voices[0].voice, "");
    EXPECT_EQ(house.voices[1].engine, "command");
    EXPECT_EQ(house.voices[1].voice, "slt");
    EXPECT_EQ(house.voices[1].command, (Places{"flite", "-voice", "{voice}", "-o", "/dev/stdout"}));
    EXPECT_EQ(house.voices[2].engine, "wyoming");
    EXPECT_EQ(house.voices[2].host, "piper.lan");
    EXPECT_EQ(house.voices[2].port, 10200);
}

TEST_F(HouseFileTest, AVoiceHasWhatItsEngineNeedsAndNothingElse) {
    EXPECT_EQ(MistakesBehind("voices:\n  - {name: A}\n"), Places{"5 voices[1].language"});
    EXPECT_EQ(MistakesBehind("voices:\n  - {name: A, language: x;}\n"), Places{"5 voices[1].language"});
    EXPECT_EQ(MistakesBehind("voices:\n  - {name: A, language: de}\n  - {name: A, language: en}\n"),
              Places{"6 voices[2].name"});
    EXPECT_EQ(MistakesBehind("voices:\n  - {name: A, language: de, engine: festival, host: h}\n"),
              Places{"5 voices[1].engine"});
    EXPECT_EQ(MistakesBehind("voices:\n  - {name: A, language: de, host: h, command: [a]}\n"),
              (Places{"5 voices[1].command", "5 voices[1].host"}));
    EXPECT_EQ(MistakesBehind("voices:\n  - {name: A, language: de, engine: command}\n"),
              Places{"5 voices[1].command"});
    EXPECT_EQ(MistakesBehind("voices:\n  - {name: A, language: de, engine: command, command: flite -o}\n"),
              Places{"5 voices[1].command"});
    EXPECT_EQ(MistakesBehind("voices:\n  - {name: A, language: de, engine: command, command: [bin/flite]}\n"),
              Places{"5 voices[1].command"});
    EXPECT_EQ(MistakesBehind("voices:\n  - {name: A, language: de, engine: wyoming, port: 0}\n"),
              (Places{"5 voices[1].host", "5 voices[1].port"}));
}

TEST_F(HouseFileTest, AnAddressThatOthersReachNeedsAToken) {
    EXPECT_EQ(MistakesBehind("address: 0.0.0.0\n"), Places{"4 address"});
    EXPECT_EQ(MistakesBehind("address: \"::\"\n"), Places{"4 address"});
    EXPECT_EQ(MistakesBehind("address: \"::1\"\n"), Places{});
    EXPECT_EQ(MistakesBehind("address: home.example\n"), Places{"4 address"});
    EXPECT_EQ(MistakesBehind("address: 0.0.0.0\ntokens:\n" + Token("a", "[play]")), Places{});
}

TEST_F(HouseFileTest, TokensHaveANameOfTheirOwnAndKnownRights) {
    EXPECT_EQ(MistakesBehind("tokens:\n" + Token("a", "[king]")), Places{"5 tokens[1].rights"});
    EXPECT_EQ(MistakesBehind("tokens:\n" + Token("a", "[\"navigator:\"]")), Places{"5 tokens[1].rights"});
    EXPECT_EQ(MistakesBehind("tokens:\n  - {name: a, hash: \"" + kHash + "\"}\n"),
              Places{"5 tokens[1].rights"});
    EXPECT_EQ(MistakesBehind("tokens:\n" + Token("a", "[play]") + Token("a", "[play]")),
              Places{"6 tokens[2].name"});
}

TEST_F(HouseFileTest, WhatTheControllerCouldNotUseOfATokenIsToldByItsLine) {
    EXPECT_EQ(MistakesBehind("tokens:\n  - {name: a, hash: not a hash, rights: [play]}\n"),
              Places{"5 tokens[1].hash"});
    EXPECT_EQ(MistakesBehind("tokens:\n  - name: a\n    hash: \"" + kHash +
                             "\"\n    rights:\n      - play\n" + "      - navigator:9999999999\n"),
              Places{"7 tokens[1].rights"});
    EXPECT_EQ(MistakesBehind("tokens:\n" + Token("my phone", "[play]")), Places{"5 tokens[1].name"});
    EXPECT_EQ(MistakesBehind("tokens:\n" + Token("a", "[\"navigator:0\"]")), Places{"5 tokens[1].rights"});
}

TEST_F(HouseFileTest, FilesAndFoldersMustBeThere) {
    EXPECT_EQ(Mistakes("name: H\ndata_folder: data\nmedia_folder: nowhere\n"), Places{"3 media_folder"});
    EXPECT_EQ(MistakesBehind("first_announcements: nothing.xml\n"), Places{"4 first_announcements"});
    EXPECT_EQ(MistakesBehind("tls: {certificate: none.pem, key: k.pem}\n"), Places{"4 tls.certificate"});
}

TEST_F(HouseFileTest, AnOutputIsOneOfTheKinds) {
    EXPECT_EQ(MistakesBehind("rooms:\n  - id: 1\n    name: A\n    output: [auto]\n"),
              Places{"7 rooms[1].output"});
    EXPECT_EQ(MistakesBehind("rooms:\n  - id: 1\n    name: A\n    output: loud\n"),
              Places{"7 rooms[1].output"});
    EXPECT_EQ(MistakesBehind("rooms:\n  - id: 1\n    name: A\n    output: {file: a, gstreamer: b}\n"),
              Places{"7 rooms[1].output"});
}

TEST_F(HouseFileTest, KeysStandOnceAndValuesAreWhatTheyShouldBe) {
    EXPECT_EQ(MistakesBehind("port: 1\nport: 2\n"), Places{"5 port"});
    EXPECT_EQ(MistakesBehind("rooms: kitchen\n"), Places{"4 rooms"});
    EXPECT_EQ(MistakesBehind("rooms:\n  - kitchen\n"), Places{"5 rooms[1]"});
    EXPECT_EQ(MistakesBehind("address: [1]\n"), Places{"4 address"});
    EXPECT_EQ(Mistakes("name: [a]\nmedia_folder: media\ndata_folder: d\n"), Places{"1 name"});
    EXPECT_EQ(MistakesBehind("? [a, b]\n: c\n"), Places{"4 "});
}

TEST_F(HouseFileTest, LoudnessIsEvenOrAsItIs) {
    EXPECT_EQ(MistakesBehind("loudness: as_it_is\n"), std::vector<std::string>());
    EXPECT_EQ(MistakesBehind("loudness: even\n"), std::vector<std::string>());
    EXPECT_EQ(MistakesBehind("loudness: loud\n").size(), 1U);
}

TEST_F(HouseFileTest, WhatIsNoYamlIsToldWithItsLine) {
    EXPECT_EQ(Mistakes("name: H\nrooms: [\n"), Places{"3 "});
    EXPECT_EQ(Mistakes("name: H\n\tport: 1\n"), Places{"2 "});
    EXPECT_EQ(Mistakes(""), Places{"0 "});
    EXPECT_EQ(Mistakes("- a\n"), Places{"1 "});
    EXPECT_EQ(Mistakes("just words\n"), Places{"1 "});
    EXPECT_EQ(Mistakes("name: a\n---\nname: b\n"), Places{"0 "});
}

TEST_F(HouseFileTest, AnOutputWithoutItsQuotesIsToldThatItNeedsThem) {
    try {
        (void)ReadHouse("name: H\nrooms:\n  - id: 1\n    output: pulse: default\n", "/", "house.yaml");
        ADD_FAILURE() << "it was taken";
    } catch (const HouseError& error) {
        EXPECT_STREQ(error.what(),
                     "house.yaml:4: is not YAML: illegal map value; a text with a colon in it stands in "
                     "quotes, as in `output: \"pulse: default\"`");
    }
}

TEST_F(HouseFileTest, OneDocumentIsAHouseAndNoneOrSeveralAreNot) {
    const std::string house = "name: H\nmedia_folder: media\ndata_folder: data\n";
    EXPECT_EQ(Mistakes("---\n" + house + "...\n"), Places{});
    const std::string twoHouses = house + "---\n" + house;
    for (const std::string& text :
         {std::string(), std::string("# a comment\n"), std::string("---\n"), twoHouses})
        EXPECT_EQ(Mistakes(text), Places{"0 "}) << text;
    // The YAML library takes it for empty documents without end.
    EXPECT_EQ(Mistakes(",\n"), Places{"0 "});
}

TEST_F(HouseFileTest, AFileThatCannotBeReadIsToldAsSuch) {
    EXPECT_THROW((void)ReadHouseFile(m_folder.Path() / "missing.yaml"), HouseError);
    EXPECT_THROW((void)ReadHouseFile(m_folder.Path()), HouseError);
    const auto large = m_folder.Write("large.yaml", std::string(1024 * 1024 + 1, '#'));
    EXPECT_THROW((void)ReadHouseFile(large), HouseError);
}

TEST_F(HouseFileTest, RoomsThatRecordIntoOneFileAreAMistakeUnlessItsNameTellsThemApart) {
    const auto rooms = [](const std::string& first, const std::string& second) {
        return "rooms:\n  - {id: 1, name: A, output: {file: " + first +
               "}}\n  - {id: 2, name: B, output: {file: " + second + "}}\n";
    };
    EXPECT_EQ(MistakesBehind(rooms("take-%n.wav", "take-%n.wav")), Places{"6 rooms[2].output"});
    EXPECT_EQ(MistakesBehind(rooms("take-%r-%n.wav", "take-%r-%n.wav")), Places{});
    EXPECT_EQ(MistakesBehind(rooms("a-%n.wav", "b-%n.wav")), Places{});
}

} // namespace

} // namespace controller
